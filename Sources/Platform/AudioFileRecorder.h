#pragma once

#include "Foundation/FileURL.h"

#include <memory>

/// What a plain recording is written as.
struct RecordingSettings {
    int sampleRate = 16000;
    int channelCount = 1;
    int bitDepth = 16;

    friend bool operator==(const RecordingSettings &, const RecordingSettings &) = default;
};

/// One recording from the microphone straight into an integer WAV file. Main thread only.
class AudioFileRecorder {
public:
    /// Stops a running recording.
    virtual ~AudioFileRecorder() = default;

    /// Gets everything ready; false when it cannot.
    virtual bool prepareToRecord() = 0;

    /// Starts, within half a second; false when it cannot.
    virtual bool record() = 0;

    /// Ends the recording and closes the file.
    virtual void stop() = 0;

    /// Average power of channel 0 over the latest input, in decibels; 0 is full scale, -120 silence.
    virtual float averagePower() = 0;
};

/// Makes plain recorders.
class AudioFileRecorderFactory {
public:
    virtual ~AudioFileRecorderFactory() = default;

    /// A recorder that will write to `url`. Throws SystemError, at once also where the microphone has just
    /// been found to give nothing: nobody waits for the same thing twice.
    virtual std::unique_ptr<AudioFileRecorder> make(const FileURL &url, const RecordingSettings &settings)
        = 0;
};
