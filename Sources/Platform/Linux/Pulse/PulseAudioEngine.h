#pragma once

#include "Platform/AudioEngine.h"
#include "Platform/Linux/Pulse/PulseInputStream.h"

/// Captures the microphone through the sound server as mono 32-bit floats at 48 kHz; the server converts.
class PulseAudioEngine final : public AudioEngine {
public:
    /// `connection` must outlive the engine.
    explicit PulseAudioEngine(PulseConnection &connection);

    AudioFormat inputFormat() const override { return m_stream.format(); }
    void installTap(int bufferSize, Tap tap) override;
    void removeTap() override;
    bool isRunning() const override { return m_stream.isDelivering(); }
    void start() override { m_stream.open(); }
    void stop() override { m_stream.close(); }

private:
    PulseInputStream m_stream;
};
