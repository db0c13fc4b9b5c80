#pragma once

#include "Platform/AudioFileRecorder.h"
#include "Platform/AudioFileStore.h"

/// Writes sound files with libsndfile. The header is updated with every write, so that the file can be opened
/// even if the program is killed.
class SndFileStore final : public AudioFileStore {
public:
    std::unique_ptr<AudioFileWriter> create(const FileURL &url, const AudioFormat &format) override;

    /// Like `create`, but with 16-bit integers; buffers written to it must have the rate and channels of
    /// `settings`. Throws SystemError, also for a bit depth other than 16.
    std::unique_ptr<AudioFileWriter> createInteger(const FileURL &url, const RecordingSettings &settings);
};
