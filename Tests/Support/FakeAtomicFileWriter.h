#pragma once

#include "Foundation/Error.h"
#include "Platform/AtomicFileWriter.h"

#include <deque>
#include <functional>
#include <mutex>
#include <vector>

/// Writes files into memory. The public members are the test's: to be read and written only while no other
/// thread calls.
class FakeAtomicFileWriter final : public AtomicFileWriter {
public:
    /// One call of write that worked.
    struct Write {
        QString path;
        QByteArray content;
        FilePrivacy privacy;

        friend bool operator==(const Write &, const Write &) = default;
    };

    std::vector<Write> writes;
    /// The folders that were swept, in order.
    std::vector<QString> sweptFolders;
    /// What the waiting was limited to, in order.
    std::vector<std::chrono::milliseconds> waitingLimits;
    /// What the next writes throw; none left, they work.
    std::deque<SystemError> failures;
    /// Runs in the middle of each write, on the thread that writes.
    std::function<void()> whileWriting = [] {};

    void write(const FileURL &url, const QByteArray &content, FilePrivacy privacy) override;
    void limitWaiting(std::chrono::milliseconds time) override { waitingLimits.push_back(time); }
    void sweepLeftovers(const FileURL &folder) override { sweptFolders.push_back(folder.path()); }

private:
    std::mutex m_mutex;
};
