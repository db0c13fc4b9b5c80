#pragma once

#include "Foundation/Error.h"

/// Why a recording is not heard. The text is English whatever the interface language.
class HistoryAudioPlaybackError final : public LocalizedError {
public:
    enum class Kind {
        CouldNotStartPlayback,
    };

    explicit HistoryAudioPlaybackError(Kind kind)
        : m_kind(kind) { }

    Kind kind() const { return m_kind; }
    QString errorDescription() const override { return QStringLiteral("Could not start playback."); }

private:
    Kind m_kind;
};
