#pragma once

#include "Foundation/Date.h"
#include "Foundation/Error.h"
#include "Foundation/FileURL.h"
#include "Foundation/Task.h"

#include <QUuid>

#include <variant>

/// One run of a speech-to-text engine.
struct TranscriptionRequest {
    /// Names the output files of the run.
    QUuid id = QUuid::createUuid();
    FileURL audioFileURL;
};

/// The result of a run.
struct TranscriptionResult {
    QUuid id;
    /// Trimmed and not empty.
    QString text;
    FileURL audioFileURL;
    Date createdAt;
};

/// The errors an engine itself detects. The messages are English in every interface language.
class TranscriptionEngineError final : public LocalizedError {
public:
    /// The payload of the cases that name a path.
    struct AtURL {
        FileURL url;
        friend bool operator==(const AtURL &, const AtURL &) = default;
    };
    struct MissingBinary : AtURL { };
    struct MissingModel : AtURL { };
    struct MissingAudioFile : AtURL { };
    struct CouldNotCreateOutputDirectory : AtURL { };
    struct ProcessFailed {
        qint32 code = 0;
        QString message;
        friend bool operator==(const ProcessFailed &, const ProcessFailed &) = default;
    };
    struct ProcessTimedOut {
        double seconds = 0;
        friend bool operator==(const ProcessTimedOut &, const ProcessTimedOut &) = default;
    };
    struct OutputMissing : AtURL { };
    struct EmptyTranscript : AtURL { };
    using Case = std::variant<MissingBinary, MissingModel, MissingAudioFile, CouldNotCreateOutputDirectory,
        ProcessFailed, ProcessTimedOut, OutputMissing, EmptyTranscript>;

    TranscriptionEngineError(Case errorCase)
        : m_case(std::move(errorCase)) { }

    const Case &errorCase() const { return m_case; }
    QString errorDescription() const override;

    /// The description of any error without what whisper-cli printed, which may be what was said.
    static QString withoutOutput(const QString &description);

    friend bool operator==(const TranscriptionEngineError &left, const TranscriptionEngineError &right) {
        return left.m_case == right.m_case;
    }

private:
    Case m_case;
};

/// Turns a recording into text.
class TranscriptionEngine {
public:
    virtual ~TranscriptionEngine() = default;

    /// Throws TranscriptionEngineError for errors the engine detects; passes system errors on.
    virtual Task<TranscriptionResult> transcribe(TranscriptionRequest request) = 0;
};
