#pragma once

#include "Platform/AudioFileRecorder.h"
#include "Platform/AudioFileStore.h"

/// Sound files through libsndfile. The header is brought up to date with every write, so that the file of a
/// program that was killed still opens.
class SndFileStore final : public AudioFileStore {
public:
    std::unique_ptr<AudioFileWriter> create(const FileURL &url, const AudioFormat &format) override;

    /// Creates a WAV file of 16-bit integers, otherwise as `create`; buffers written to it have the rate and
    /// the channels of `settings`. Throws SystemError, also for a bit depth other than 16.
    std::unique_ptr<AudioFileWriter> createInteger(const FileURL &url, const RecordingSettings &settings);
};
