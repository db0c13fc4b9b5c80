#pragma once

#include "Foundation/FileURL.h"

#include <memory>

/// The file format of a plain recording.
struct RecordingSettings {
    int sampleRate = 16000;
    int channelCount = 1;
    int bitDepth = 16;

    friend bool operator==(const RecordingSettings &, const RecordingSettings &) = default;
};

/// Records the microphone directly into an integer WAV file. Main thread only.
class AudioFileRecorder {
public:
    /// Stops a running recording.
    virtual ~AudioFileRecorder() = default;

    /// Prepares for recording; false on failure.
    virtual bool prepareToRecord() = 0;

    /// Starts within half a second; false on failure.
    virtual bool record() = 0;

    /// Ends the recording and closes the file.
    virtual void stop() = 0;

    /// Average power of channel 0 over the latest input in decibels; 0 is full scale, -120 silence.
    virtual float averagePower() = 0;
};

/// Creates plain recorders.
class AudioFileRecorderFactory {
public:
    virtual ~AudioFileRecorderFactory() = default;

    /// A recorder that will write to `url`. Throws SystemError; without waiting again if the microphone has
    /// just failed to open.
    virtual std::unique_ptr<AudioFileRecorder> make(const FileURL &url, const RecordingSettings &settings)
        = 0;
};
