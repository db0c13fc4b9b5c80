#pragma once

#include "Platform/SessionLock.h"

/// A desktop that the test locks.
class FakeSessionLock final : public SessionLock {
public:
    bool isLocked() override {
        ++askCount;
        return locked;
    }

    bool locked = false;
    int askCount = 0;
};
