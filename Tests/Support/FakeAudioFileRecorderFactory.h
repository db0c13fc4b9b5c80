#pragma once

#include "Foundation/Error.h"
#include "Platform/AudioFileRecorder.h"

#include <deque>

/// Recorders that do as a test says and write nothing. Main thread only.
class FakeAudioFileRecorderFactory final : public AudioFileRecorderFactory {
public:
    /// What the next recorder does.
    struct Reply {
        bool canPrepare = true;
        bool canRecord = true;
        /// Power that it measures, in decibels.
        float averagePower = -120.0F;
        /// Thrown instead of making a recorder.
        std::optional<SystemError> failure;
    };

    /// A recorder that was made, and the operations that were called on it, in order; "destroy" is the last.
    struct Recorder {
        FileURL url;
        RecordingSettings settings;
        Reply reply;
        std::vector<QString> calls;
    };

    /// What the next calls of make give; making a recorder without one is an error.
    std::deque<Reply> replies;
    /// Every recorder that was made, in order.
    std::vector<std::shared_ptr<Recorder>> recorders;

    std::unique_ptr<AudioFileRecorder> make(const FileURL &url, const RecordingSettings &settings) override;
};
