#pragma once

#include "Platform/AudioFileRecorder.h"
#include "Platform/MicrophonePermission.h"
#include "TolmiApp/Audio/AudioRecorderError.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

#include <memory>

/// Fallback for live capture: records to a file without pre-roll. It also requests the microphone permission
/// for the whole program. Main thread only.
class AudioRecorder final : public Recorder {
public:
    /// Both must outlive the recorder.
    AudioRecorder(MicrophonePermission &permission, AudioFileRecorderFactory &recorders);

    Task<bool> requestPermission() override;

    /// First ends a running recording.
    void startRecording(const FileURL &url) override;

    /// Does nothing when not recording.
    void stopRecording() override;

    /// 0 when not recording.
    double currentLevel() override;

private:
    MicrophonePermission &m_permission;
    AudioFileRecorderFactory &m_recorders;
    /// Present while a recording runs.
    std::unique_ptr<AudioFileRecorder> m_recorder;
};
