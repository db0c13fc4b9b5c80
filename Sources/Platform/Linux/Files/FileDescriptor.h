#pragma once

#include <unistd.h>

#include <utility>

/// Owns a file descriptor; -1 means none.
class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor) { }
    ~FileDescriptor() { reset(); }
    FileDescriptor(FileDescriptor &&other) noexcept
        : m_descriptor(other.release()) { }
    FileDescriptor &operator=(FileDescriptor &&other) noexcept {
        if (this != &other)
            reset(other.release());
        return *this;
    }

    int get() const { return m_descriptor; }
    bool isValid() const { return m_descriptor >= 0; }

    /// Transfers ownership to the caller.
    int release() { return std::exchange(m_descriptor, -1); }

    /// Closes the current descriptor and takes ownership of `descriptor`.
    void reset(int descriptor = -1) {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
        m_descriptor = descriptor;
    }

private:
    int m_descriptor = -1;
};
