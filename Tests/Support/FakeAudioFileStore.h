#pragma once

#include "Foundation/Error.h"
#include "Platform/AudioFileStore.h"

#include <deque>
#include <functional>
#include <mutex>
#include <set>

/// Sound files in memory. The public members are the test's: to be read and written only while no other
/// thread calls.
class FakeAudioFileStore final : public AudioFileStore {
public:
    /// A file that was created, and the first channel of what was written to it.
    struct File {
        FileURL url;
        AudioFormat format;
        std::vector<float> samples;
        bool isOpen = true;
    };

    /// Every created file, in order, also those that another one replaced.
    std::vector<std::shared_ptr<File>> files;

    /// What the next calls of create throw; none left, they work.
    std::deque<SystemError> createFailures;
    /// The writes that fail, counted over all files from 0.
    std::set<int> failingWrites;
    int writeCount = 0;
    /// Runs before each write, on its thread.
    std::function<void()> onWrite;

    std::unique_ptr<AudioFileWriter> create(const FileURL &url, const AudioFormat &format) override;

private:
    class Writer;

    std::mutex m_mutex;
};
