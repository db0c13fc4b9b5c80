#pragma once

#include "Foundation/FileURL.h"
#include "Platform/AudioBuffer.h"

#include <QByteArray>

#include <memory>

/// Reads sound of any encoding as floats, through libsndfile. Not thread-safe.
class SndFileReader {
public:
    /// The sound of the file at `url`, from its start on. Throws SystemError where there is none, at once
    /// also for a pipe or a device, which could be waited for for ever.
    static std::unique_ptr<SndFileReader> open(const FileURL &url);

    /// The sound of a file that is in memory; null when there is none.
    static std::unique_ptr<SndFileReader> ofContent(QByteArray content);

    ~SndFileReader();

    AudioFormat format() const;
    /// Of the whole sound.
    qint64 frameCount() const;

    /// Reads up to `count` frames with interleaved channels; how many there were. Fewer at the end only.
    qint64 read(float *samples, qint64 count);

    /// Goes on reading at `frame`.
    void seek(qint64 frame);

private:
    struct Native;

    explicit SndFileReader(std::unique_ptr<Native> native);

    const std::unique_ptr<Native> m_native;
};
