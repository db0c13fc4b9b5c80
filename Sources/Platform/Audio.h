#pragma once

#include "Foundation/FileURL.h"

#include <functional>
#include <memory>
#include <vector>

/// How samples are laid out: 32-bit floats from -1 to 1, one plane for each channel.
struct AudioFormat {
    /// Frames a second.
    double sampleRate = 48000;
    int channelCount = 1;

    friend bool operator==(const AudioFormat &, const AudioFormat &) = default;
};

/// A piece of sound. Copies are independent.
struct AudioBuffer {
    AudioFormat format;
    /// One vector for each channel, all of `frameLength` samples; empty when the source delivers no float
    /// samples.
    std::vector<std::vector<float>> channels;
    qint64 frameLength = 0;
};

/// The microphone side of the sound system.
class AudioEngine {
public:
    /// Receives one buffer on the audio thread. The buffer is the engine's and must not be kept.
    using Tap = std::function<void(const AudioBuffer &)>;

    virtual ~AudioEngine() = default;

    /// The format of every buffer that a tap gets; fixed, known without a device.
    virtual AudioFormat inputFormat() const = 0;

    /// Delivers input in buffers of `bufferSize` frames to `tap` from the next start on.
    virtual void installTap(int bufferSize, Tap tap) = 0;

    /// After it has returned the tap is not called again.
    virtual void removeTap() = 0;

    /// Whether input is being delivered; false again once the source has gone.
    virtual bool isRunning() const = 0;

    /// Opens the default source and waits until it delivers, a bounded time. Throws SystemError.
    virtual void start() = 0;

    /// Closes the source. Harmless when stopped.
    virtual void stop() = 0;
};

/// A WAV file that is being written. Its header is valid after every write. Destruction closes it.
class AudioFileWriter {
public:
    virtual ~AudioFileWriter() = default;

    /// Appends the buffer. Throws SystemError.
    virtual void write(const AudioBuffer &buffer) = 0;
};

/// Creates sound files.
class AudioFileStore {
public:
    virtual ~AudioFileStore() = default;

    /// Creates a WAV file of 32-bit floats at `url`, private to the user, replacing what is there. Throws
    /// SystemError.
    virtual std::unique_ptr<AudioFileWriter> create(const FileURL &url, const AudioFormat &format) = 0;
};

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

    /// Starts; false when it cannot.
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

    /// A recorder that will write to `url`. Throws SystemError.
    virtual std::unique_ptr<AudioFileRecorder> make(const FileURL &url, const RecordingSettings &settings)
        = 0;
};

/// Whether the program may listen.
enum class AuthorizationStatus {
    NotDetermined,
    Restricted,
    Denied,
    Authorized,
};

/// The right to use the microphone.
class MicrophonePermission {
public:
    virtual ~MicrophonePermission() = default;

    /// The present status, without asking the user and without opening a source. Main thread.
    virtual AuthorizationStatus status() = 0;

    /// Asks the user; `answer` gets the outcome on the main thread.
    virtual void requestAccess(std::function<void(bool)> answer) = 0;
};
