#pragma once

/// Reports whether the session is locked, when someone other than the user may be at the keyboard. Main
/// thread only.
class SessionLock {
public:
    virtual ~SessionLock() = default;

    /// Whether it is locked, as last reported; never waits. False if the desktop does not report it.
    virtual bool isLocked() = 0;
};
