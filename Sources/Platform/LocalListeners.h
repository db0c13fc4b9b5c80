#pragma once

class QUrl;

/// Whose program listens at an address.
enum class Listener {
    /// The address is not a local one, or not valid.
    Elsewhere,
    Nobody,
    /// Only programs of this user, root or system accounts.
    Trusted,
    /// At least one program of another user, or it cannot be determined.
    Untrusted,
};

/// Reports whose programs listen at local addresses, where any user of the machine can listen for what others
/// send. Any thread may call it.
class LocalListeners {
public:
    virtual ~LocalListeners() = default;

    /// Whose program would answer a request for `url` now.
    virtual Listener listenerAt(const QUrl &url) const = 0;
};
