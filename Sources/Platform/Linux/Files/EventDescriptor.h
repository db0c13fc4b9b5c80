#pragma once

#include "Platform/Linux/Files/FileDescriptor.h"

#include <sys/eventfd.h>

#include <cstdint>

/// Wakes a thread that polls. Any thread may signal.
class EventDescriptor {
public:
    int get() const { return m_descriptor.get(); }
    void signal() const { eventfd_write(get(), 1); }
    /// Takes all signals so far back, so that polling waits for the next.
    void clear() const {
        eventfd_t count = 0;
        eventfd_read(get(), &count);
    }

private:
    FileDescriptor m_descriptor { eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK) };
};
