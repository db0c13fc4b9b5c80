#include "Platform/Linux/Pulse/PulseFileRecorder.h"

#include "Foundation/Log.h"
#include "Platform/Desktop/SndFileStore.h"

#include <QFile>

#include <algorithm>
#include <cmath>

namespace {
/// Decibels; reported for silence.
constexpr float silencePower = -120.0F;

/// The level meter reads the power fifty times a second.
constexpr int buffersPerSecond = 50;

/// Short, because the main thread waits for it.
constexpr std::chrono::milliseconds openingPatience { 400 };

float power(const AudioBuffer &buffer) {
    float squares = 0.0F;
    for (const float sample : buffer.channels.front())
        squares += sample * sample;
    const float decibels = 10.0F * std::log10(squares / float(buffer.frameLength));
    // The logarithm of digital silence is minus infinity.
    return std::max(silencePower, decibels);
}

void logFailure(const LocalizedError &error) {
    logLine(QStringLiteral("Tolmi: recording failed. Error: ") + error.errorDescription());
}
} // namespace

PulseFileRecorder::PulseFileRecorder(Platform platform, const FileURL &url, const RecordingSettings &settings)
    : m_audioFiles(platform.audioFiles)
    , m_url(url)
    , m_settings(settings)
    , m_averagePower(silencePower)
    , m_processing(QStringLiteral("Tolmi.PulseFileRecorder"))
    , m_stream(platform.connection, AudioFormat { double(settings.sampleRate), settings.channelCount }) { }

PulseFileRecorder::~PulseFileRecorder() {
    stop();
}

bool PulseFileRecorder::prepareToRecord() {
    try {
        m_file = m_audioFiles.createInteger(m_url, m_settings);
        return true;
    } catch (const SystemError &error) {
        logFailure(error);
        return false;
    }
}

bool PulseFileRecorder::record() {
    if (!m_file && !prepareToRecord())
        return false;
    m_stream.deliverTo(m_settings.sampleRate / buffersPerSecond, [this](const AudioBuffer &buffer) {
        m_processing.async(
            [this, ownCopy = std::make_shared<const AudioBuffer>(buffer)] { process(*ownCopy); });
    });
    try {
        m_stream.open(openingPatience);
        return true;
    } catch (const SystemError &error) {
        logFailure(error);
        stop();
        // An empty file is useless.
        QFile::remove(m_url.path());
        return false;
    }
}

void PulseFileRecorder::process(const AudioBuffer &buffer) {
    m_averagePower = power(buffer);
    try {
        m_file->write(buffer);
    } catch (const SystemError &) {
        // The next buffer tries again: a full disk may have space by then.
    }
}

void PulseFileRecorder::stop() {
    m_stream.deliverTo(0, nullptr);
    m_stream.close();
    m_processing.sync([this] { m_file = nullptr; });
}

std::unique_ptr<AudioFileRecorder> PulseFileRecorderFactory::make(
    const FileURL &url, const RecordingSettings &settings) {
    if (const auto failure = m_platform.connection.recentOpeningFailure())
        throw SystemError(*failure);
    return std::make_unique<PulseFileRecorder>(m_platform, url, settings);
}
