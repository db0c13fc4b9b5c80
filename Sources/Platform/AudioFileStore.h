#pragma once

#include "Foundation/FileURL.h"
#include "Platform/AudioBuffer.h"

#include <memory>

/// A WAV file being written. Its header is valid after every write. The destructor closes it.
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

    /// Creates a WAV file of 32-bit floats at `url`, private to the user, replacing an existing file. Throws
    /// SystemError.
    virtual std::unique_ptr<AudioFileWriter> create(const FileURL &url, const AudioFormat &format) = 0;
};
