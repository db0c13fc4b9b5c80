#pragma once

#include "Tolmictl/Status.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

struct DBusConnection;
struct DBusMessage;

/// How Tolmi does one of its operations here.
struct OperationRow {
    std::string operation;
    std::string method;
    bool isAvailable = false;
    std::string reason;
};

/// The running Tolmi on the session bus. All members throw Failure.
class Bus {
public:
    Bus();

    /// Calls a method of org.tolmi.Tolmi1 that returns nothing, with the time if there is one.
    void call(const std::string &method, std::optional<uint64_t> time);

    Status status();
    std::vector<OperationRow> methods();

    /// Calls `observer` with the status now and whenever it changes, and ends by the failure that Tolmi has
    /// ended. The level is left out.
    [[noreturn]] void follow(const std::function<void(const Status &)> &observer);

private:
    struct Close {
        void operator()(DBusConnection *connection) const;
    };
    struct Unreference {
        void operator()(DBusMessage *message) const;
    };
    using Message = std::unique_ptr<DBusMessage, Unreference>;

    Message message(const char *interface, const char *member) const;
    Message answer(const Message &call);
    void match(const std::string &rule);
    Message nextSignal();

    std::unique_ptr<DBusConnection, Close> m_connection;
};
