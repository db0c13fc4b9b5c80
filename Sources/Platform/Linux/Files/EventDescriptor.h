#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"

#include <sys/eventfd.h>

#include <cstdint>

/// Wakes a thread blocked in poll(). Any thread may signal.
class EventDescriptor {
public:
    int get() const { return m_descriptor.get(); }
    void signal() const { eventfd_write(get(), 1); }
    /// Resets the descriptor, so that poll() waits for the next signal.
    void clear() const {
        eventfd_t count = 0;
        eventfd_read(get(), &count);
    }

private:
    FileDescriptor m_descriptor { eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK) };
};
