#pragma once

#include "Foundation/FileURL.h"
#include "Platform/AudioBuffer.h"

#include <QByteArray>

#include <memory>

/// Decodes sound files to floats with libsndfile. Not thread-safe.
class SndFileReader {
public:
    /// Opens the file at `url`. Throws SystemError if it is not a sound file; pipes and devices, which could
    /// block, are rejected at once.
    static std::unique_ptr<SndFileReader> open(const FileURL &url);

    /// Opens a sound file in memory; null if it is not one.
    static std::unique_ptr<SndFileReader> ofContent(QByteArray content);

    ~SndFileReader();

    AudioFormat format() const;
    /// Total number of frames.
    qint64 frameCount() const;

    /// Reads up to `count` frames, interleaved; returns how many were read, fewer only at the end.
    qint64 read(float *samples, qint64 count);

    /// Continues reading at `frame`.
    void seek(qint64 frame);

private:
    struct Native;

    explicit SndFileReader(std::unique_ptr<Native> native);

    const std::unique_ptr<Native> m_native;
};
