#include "Foundation/ThreadPriority.h"

#include <sys/resource.h>
#include <unistd.h>

// Threads are niced one by one, and the disk's queue follows.
void lowerPriorityOfCurrentThread() {
    constexpr int utility = 10;
    const auto thread = id_t(::gettid());
    ::setpriority(PRIO_PROCESS, thread, ::getpriority(PRIO_PROCESS, thread) + utility);
}
