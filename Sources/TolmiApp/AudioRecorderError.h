#pragma once

#include "Platform/Error.h"

/// The plain recorder could not start.
class AudioRecorderError final : public LocalizedError {
public:
    QString errorDescription() const override {
        return QStringLiteral("Could not start microphone recording.");
    }
};
