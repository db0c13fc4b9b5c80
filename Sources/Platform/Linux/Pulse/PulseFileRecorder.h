#pragma once

#include "Foundation/SerialQueue.h"
#include "Platform/AudioFileRecorder.h"
#include "Platform/AudioFileStore.h"
#include "Platform/Linux/Pulse/PulseInputStream.h"

class SndFileStore;

/// Records the default microphone into an integer WAV file. Its own queue writes the file and measures the
/// power.
class PulseFileRecorder final : public AudioFileRecorder {
public:
    /// What the recorder uses; both must outlive it.
    struct Platform {
        PulseConnection &connection;
        SndFileStore &audioFiles;
    };

    PulseFileRecorder(Platform platform, const FileURL &url, const RecordingSettings &settings);
    ~PulseFileRecorder() override;

    /// Creates the file; a failure is logged.
    bool prepareToRecord() override;
    /// Waits for the first samples, normally a few milliseconds; a failure is logged.
    bool record() override;
    void stop() override;
    /// Measured over a fiftieth of a second.
    float averagePower() override { return m_averagePower; }

private:
    void process(const AudioBuffer &buffer);

    SndFileStore &m_audioFiles;
    const FileURL m_url;
    const RecordingSettings m_settings;
    /// Used on m_processing while a recording runs.
    std::unique_ptr<AudioFileWriter> m_file;
    std::atomic<float> m_averagePower;
    SerialQueue m_processing;
    PulseInputStream m_stream;
};

/// Creates recorders that share one connection.
class PulseFileRecorderFactory final : public AudioFileRecorderFactory {
public:
    explicit PulseFileRecorderFactory(PulseFileRecorder::Platform platform)
        : m_platform(platform) { }

    std::unique_ptr<AudioFileRecorder> make(const FileURL &url, const RecordingSettings &settings) override;

private:
    PulseFileRecorder::Platform m_platform;
};
