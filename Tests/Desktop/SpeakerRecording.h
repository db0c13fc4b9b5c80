#pragma once

#include <QProcess>

#include <vector>

/// Records what the virtual speaker plays, from construction on: mono, 48 kHz, 1 is full scale.
class SpeakerRecording {
public:
    SpeakerRecording();
    ~SpeakerRecording();

    /// All that has been recorded.
    const std::vector<double> &samples() const { return m_samples; }

    /// Lets the recording go on for so many frames; false when it does not.
    bool listen(size_t frameCount);

private:
    void take();

    QProcess m_recorder;
    std::vector<double> m_samples;
};
