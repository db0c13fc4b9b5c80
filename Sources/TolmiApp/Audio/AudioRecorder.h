#pragma once

#include "Platform/AudioFileRecorder.h"
#include "Platform/MicrophonePermission.h"
#include "TolmiApp/Audio/AudioRecorderError.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

#include <memory>

/// The fallback of capture: microphone to file without pre-roll. It also asks for the microphone permission
/// for the whole program. Main thread only.
class AudioRecorder final : public Recorder {
public:
    /// Both must outlive the recorder.
    AudioRecorder(MicrophonePermission &permission, AudioFileRecorderFactory &recorders);

    Task<bool> requestPermission() override;

    /// Ends a recording that is under way first.
    void startRecording(const FileURL &url) override;

    /// Harmless when nothing is recorded.
    void stopRecording() override;

    /// 0 when nothing is recorded.
    double currentLevel() override;

private:
    MicrophonePermission &m_permission;
    AudioFileRecorderFactory &m_recorders;
    /// Present while a recording runs.
    std::unique_ptr<AudioFileRecorder> m_recorder;
};
