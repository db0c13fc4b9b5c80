#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Platform/Linux/Files/LinuxProcess.h"
#include "Support/AwaitTask.h"
#include "TolmiApp/Transcription/AdaptiveTranscriptionService.h"
#include "TolmiCore/WhisperCLIEngine.h"

#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <gtest/gtest.h>

namespace {
// Peak levels that count as speech and as silence.
constexpr double loud = 0.3;
constexpr double silent = 0.01;

FileURL sample(const QString &name) {
    return FileURL(QStringLiteral(TOLMI_SAMPLES_DIR "/") + name + QStringLiteral(".wav"));
}

QString textOf(const QString &sampleName) {
    QFile file(QStringLiteral(TOLMI_SAMPLES_DIR "/") + sampleName + QStringLiteral(".txt"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return QString::fromUtf8(file.readAll()).trimmed();
}

/// Writes two seconds of silence as 16-bit samples at 16 kHz.
void writeSilence(const FileURL &url) {
    constexpr quint32 rate = 16000;
    constexpr quint32 size = 2 * rate * 2;
    QFile file(url.path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    QDataStream stream(&file);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("RIFF", 4);
    stream << quint32(36 + size);
    stream.writeRawData("WAVEfmt ", 8);
    stream << quint32(16) << quint16(1) << quint16(1) << rate << rate * 2 << quint16(2) << quint16(16);
    stream.writeRawData("data", 4);
    stream << size;
    stream.writeRawData(QByteArray(size, '\0').constData(), size);
}

template <typename T>
T awaitInLoop(Task<T> task) {
    return awaitTask(std::move(task), [] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); });
}

/// The real whisper-cli and the starting model.
class RealWhisperCLI : public testing::Test {
protected:
    TranscriptionResult transcribe(const FileURL &audio, const QString &language) {
        WhisperCLIConfiguration config;
        config.binaryURL = binary;
        config.modelURL = m_model;
        config.language = language;
        config.outputDirectoryURL = output();
        config.extraArguments = QStringLiteral("-bo 2 -bs 2 -tp 0").split(u' ');
        WhisperCLIEngine engine(config, m_files, m_launcher, m_clock);
        return awaitInLoop(engine.transcribe({ QUuid::createUuid(), audio }));
    }

    /// Transcribes `audio` in English, with enough time for the second pass on any machine.
    AdaptiveTranscriptionOutcome dictate(const FileURL &audio, double peakLevel,
        DictationPerformanceMode mode,
        double threshold = AdaptiveTranscriptionService::defaultFallbackThreshold) {
        AdaptiveTranscriptionService service({
            .fileManager = m_files,
            .transcribeOperation
            = AdaptiveTranscriptionService::defaultTranscribeOperation(m_launcher, m_clock),
            .fallbackThreshold = threshold,
            .fallbackTimeoutSeconds = 100,
        });
        AdaptiveTranscriptionRequest request;
        request.audioFileURL = audio;
        request.binaryURL = binary;
        request.modelURL = m_model;
        request.language = QStringLiteral("en");
        request.outputDirectoryURL = output();
        request.performanceMode = mode;
        request.peakLevel = peakLevel;
        return awaitInLoop(service.transcribe(request, [this] {
            EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
            ++m_fallbackStarts;
        }));
    }

    template <typename Run>
    static QString errorOf(Run run) {
        try {
            run();
        } catch (const std::exception &error) {
            return localizedDescription(error);
        }
        return QStringLiteral("no error");
    }

    FileURL at(const QString &name) const { return FileURL(m_folder.filePath(name)); }
    FileURL output() const { return at(QStringLiteral("transcripts")); }
    qsizetype transcriptCount() const { return QDir(output().path()).entryList(QDir::Files).size(); }

    const FileURL binary { QStringLiteral(TOLMI_TEST_WHISPER_CLI) };
    FileURL m_model { QStringLiteral(TOLMI_STARTING_MODEL) };
    int m_fallbackStarts = 0;

private:
    QTemporaryDir m_folder;
    LinuxFileManager m_files;
    LinuxProcessLauncher m_launcher;
    MainLoopClock m_clock;
};

struct Sample {
    const char *name;
    const char *language;
};

class RealWhisperCLISample : public RealWhisperCLI, public testing::WithParamInterface<Sample> { };

TEST_P(RealWhisperCLISample, IsTranscribedExactly) {
    const QString name = QString::fromUtf8(GetParam().name);
    EXPECT_EQ(transcribe(sample(name), QString::fromUtf8(GetParam().language)).text, textOf(name));
}

INSTANTIATE_TEST_SUITE_P(Samples, RealWhisperCLISample,
    testing::Values(Sample { "english-1", "en" }, Sample { "english-2", "en" }, Sample { "romanian-1", "ro" },
        Sample { "romanian-2", "ro" }, Sample { "english-1", "auto" }, Sample { "romanian-1", "auto" }));

TEST_F(RealWhisperCLI, OnePassIsEnoughForAGoodText) {
    const QString name = QStringLiteral("english-2");
    const auto outcome = dictate(sample(name), loud, DictationPerformanceMode::MaxQuality);
    EXPECT_EQ(outcome.text, textOf(name));
    EXPECT_GT(outcome.firstPassScore, AdaptiveTranscriptionService::defaultFallbackThreshold);
    EXPECT_FALSE(outcome.usedFallback);
    EXPECT_EQ(outcome.qualityPass, QualityPass::Single);
    EXPECT_EQ(transcriptCount(), 1);
}

TEST_F(RealWhisperCLI, ASecondPassRunsIfTheScoreIsTooLow) {
    const QString name = QStringLiteral("english-1");
    const auto outcome = dictate(sample(name), loud, DictationPerformanceMode::MaxQuality, 2.0);
    EXPECT_EQ(outcome.text, textOf(name));
    EXPECT_TRUE(outcome.usedFallback);
    EXPECT_EQ(outcome.qualityPass, QualityPass::Fallback);
    EXPECT_EQ(m_fallbackStarts, 1);
    EXPECT_EQ(transcriptCount(), 2);
}

TEST_F(RealWhisperCLI, SilenceProducesNoText) {
    const FileURL silence = at(QStringLiteral("silence.wav"));
    writeSilence(silence);
    EXPECT_EQ(dictate(silence, silent, DictationPerformanceMode::Faster).text, QString());
    EXPECT_EQ(errorOf([&] { dictate(silence, silent, DictationPerformanceMode::MaxQuality); }),
        QStringLiteral("whisper-cli produced an empty transcript for silence.wav."));
    EXPECT_EQ(m_fallbackStarts, 1);
}

TEST_F(RealWhisperCLI, AnInvalidModelFailsWithTheProgramsMessage) {
    m_model = sample(QStringLiteral("english-1"));
    const QString error
        = errorOf([&] { transcribe(sample(QStringLiteral("english-1")), QStringLiteral("en")); });
    EXPECT_TRUE(error.startsWith(QStringLiteral("whisper-cli failed with exit code 3. ")))
        << error.toStdString();
    EXPECT_TRUE(error.contains(QStringLiteral("invalid model data"))) << error.toStdString();
}

TEST_F(RealWhisperCLI, AnInvalidSoundFileProducesNoTranscript) {
    // Text, because random bytes can look like a few frames of MP3.
    const FileURL text = at(QStringLiteral("text.wav"));
    QFile file(text.path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("This is a text, and no sound at all.\n");
    file.close();
    const QString error = errorOf([&] { transcribe(text, QStringLiteral("en")); });
    EXPECT_TRUE(error.startsWith(QStringLiteral("whisper-cli finished but output file is missing at ")))
        << error.toStdString();
}
} // namespace
