#include "Desktop/SpeakerRecording.h"

#include "Support/UntilTrue.h"

#include <QtEndian>

#include <gtest/gtest.h>

SpeakerRecording::SpeakerRecording() {
    QObject::connect(&m_recorder, &QProcess::readyReadStandardOutput, &m_recorder, [this] { take(); });
    m_recorder.start(QStringLiteral("parecord"),
        { QStringLiteral("--device=") + qEnvironmentVariable("TOLMI_DESKTOP_SPEAKER")
                + QStringLiteral(".monitor"),
            QStringLiteral("--raw"), QStringLiteral("--format=s16le"), QStringLiteral("--rate=48000"),
            QStringLiteral("--channels=1"), QStringLiteral("--latency-msec=20") });
    EXPECT_TRUE(listen(1));
}

SpeakerRecording::~SpeakerRecording() {
    m_recorder.disconnect();
    m_recorder.kill();
    m_recorder.waitForFinished();
}

bool SpeakerRecording::listen(size_t frameCount) {
    const size_t end = m_samples.size() + frameCount;
    return untilTrue([&] { return m_samples.size() >= end; });
}

void SpeakerRecording::take() {
    while (m_recorder.bytesAvailable() >= 2) {
        const QByteArray bytes = m_recorder.read(m_recorder.bytesAvailable() & ~1);
        for (qsizetype place = 0; place < bytes.size(); place += 2)
            m_samples.push_back(qFromLittleEndian<qint16>(bytes.constData() + place) / 32768.0);
    }
}
