#include "TolmiCore/TranscriptionEngine.h"

#include "Text/Text.h"

namespace {
constexpr QLatin1String failurePrefix("whisper-cli failed with exit code ");

struct DescribeEngineError {
    using E = TranscriptionEngineError;

    QString operator()(const E::MissingBinary &error) const {
        return QStringLiteral("whisper-cli binary not found or not executable at ") + error.url.path() + u'.';
    }
    QString operator()(const E::MissingModel &error) const {
        return QStringLiteral("Whisper model file not found at ") + error.url.path() + u'.';
    }
    QString operator()(const E::MissingAudioFile &error) const {
        return QStringLiteral("Audio recording not found at ") + error.url.path() + u'.';
    }
    QString operator()(const E::CouldNotCreateOutputDirectory &error) const {
        return QStringLiteral("Could not create transcript output directory at ") + error.url.path() + u'.';
    }
    QString operator()(const E::ProcessFailed &error) const {
        return failurePrefix + QString::number(error.code) + QStringLiteral(". ") + error.message;
    }
    QString operator()(const E::ProcessTimedOut &error) const {
        return QStringLiteral("whisper-cli timed out after ") + Text::shortestDecimal(error.seconds)
            + QStringLiteral("s.");
    }
    QString operator()(const E::OutputMissing &error) const {
        return QStringLiteral("whisper-cli finished but output file is missing at ") + error.url.path()
            + u'.';
    }
    QString operator()(const E::EmptyTranscript &error) const {
        return QStringLiteral("whisper-cli produced an empty transcript for ") + error.url.lastPathComponent()
            + u'.';
    }
};
} // namespace

QString TranscriptionEngineError::errorDescription() const {
    return std::visit(DescribeEngineError {}, m_case);
}

QString TranscriptionEngineError::withoutOutput(const QString &description) {
    return description.startsWith(failurePrefix)
        ? description.left(description.indexOf(u'.', failurePrefix.size()) + 1)
        : description;
}
