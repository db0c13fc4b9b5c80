#pragma once

/// Tells whether the desktop is locked, so that whoever sits at the keyboard need not be the user. Main
/// thread only.
class SessionLock {
public:
    virtual ~SessionLock() = default;

    /// Whether it is locked, as far as is known; never waits. A desktop that does not tell is not locked.
    virtual bool isLocked() = 0;
};
