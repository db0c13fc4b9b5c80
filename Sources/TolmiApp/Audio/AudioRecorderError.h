#pragma once

#include "Foundation/Error.h"

/// Why a plain recording did not start. The messages are English in every interface language.
class AudioRecorderError final : public LocalizedError {
public:
    enum class Kind {
        CouldNotStartRecording,
    };

    explicit AudioRecorderError(Kind kind)
        : m_kind(kind) { }

    Kind kind() const { return m_kind; }
    QString errorDescription() const override {
        return QStringLiteral("Could not start microphone recording.");
    }

private:
    Kind m_kind;
};
