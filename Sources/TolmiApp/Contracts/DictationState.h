#pragma once

#include <QObject>
#include <QString>

/// What the dictation flow is doing.
class DictationState {
    Q_GADGET
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    Q_PROPERTY(QString message READ message CONSTANT)

public:
    enum class Kind {
        /// No dictation.
        Idle,
        /// The microphone is recorded.
        Recording,
        /// The first transcription pass runs.
        Transcribing,
        /// The heavier second pass runs.
        OptimizingQuality,
        /// A text refiner runs.
        Refining,
        /// The text is pasted into the front application.
        Pasting,
        /// A dictation has finished.
        Done,
        /// Something went wrong; message() says what.
        Error,
    };
    Q_ENUM(Kind)

    DictationState() = default;
    /// Any state except the error, which needs a message.
    DictationState(Kind kind)
        : m_kind(kind) { }

    /// The error state with a message already in the user's language.
    static DictationState error(QString message) {
        DictationState state(Kind::Error);
        state.m_message = std::move(message);
        return state;
    }

    Kind kind() const { return m_kind; }
    /// The message of an error; empty in every other state.
    const QString &message() const { return m_message; }

    /// Whether a text is on its way: what was recorded is being transcribed, refined or pasted.
    bool isProcessing() const {
        return m_kind == Kind::Transcribing || m_kind == Kind::OptimizingQuality || m_kind == Kind::Refining
            || m_kind == Kind::Pasting;
    }

    friend bool operator==(const DictationState &, const DictationState &) = default;

private:
    Kind m_kind = Kind::Idle;
    QString m_message;
};
Q_DECLARE_METATYPE(DictationState)
