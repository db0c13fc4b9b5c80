#pragma once

class QUrl;

/// Who answers at an address, as far as this machine can tell.
enum class Listener {
    /// The address is not one of this machine, or none at all.
    Elsewhere,
    Nobody,
    /// Programs of this user, of root or of accounts of the system, and nobody else's.
    Trusted,
    /// Somebody else's program, perhaps among others, or one that cannot be told.
    Stranger,
};

/// Tells whose programs listen at the addresses by which this machine reaches itself. On such an address any
/// user may wait for what another sends to it. Any thread may call it.
class LocalListeners {
public:
    virtual ~LocalListeners() = default;

    /// Who would answer a request for `url` now.
    virtual Listener listenerAt(const QUrl &url) const = 0;
};
