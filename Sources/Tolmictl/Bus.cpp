#include "Tolmictl/Bus.h"

#include "Tolmictl/Failure.h"

#include <dbus/dbus.h>

namespace {
constexpr char serviceName[] = "org.tolmi.Tolmi";
constexpr char objectPath[] = "/org/tolmi/Tolmi1";
constexpr char interfaceName[] = "org.tolmi.Tolmi1";
constexpr int patienceMilliseconds = 5000;

class Error {
public:
    Error() { dbus_error_init(&m_error); }
    ~Error() { dbus_error_free(&m_error); }
    Error(const Error &) = delete;
    Error &operator=(const Error &) = delete;

    DBusError *get() { return &m_error; }
    bool is(const char *name) const { return dbus_error_has_name(&m_error, name); }
    std::string message() const { return m_error.message ? m_error.message : ""; }

private:
    DBusError m_error;
};

Failure notRunning(const std::string &message) {
    return { ExitStatus::NotRunning, message };
}

Failure failureOf(const Error &error) {
    if (error.is(DBUS_ERROR_SERVICE_UNKNOWN) || error.is(DBUS_ERROR_NAME_HAS_NO_OWNER))
        return notRunning("Tolmi is not running.");
    if (error.is(DBUS_ERROR_DISCONNECTED))
        return notRunning("The session bus has ended.");
    if (error.is(DBUS_ERROR_NO_REPLY) || error.is(DBUS_ERROR_TIMEOUT))
        return { ExitStatus::Refused, "Tolmi does not answer." };
    return { ExitStatus::Refused, error.message() };
}

/// Reads the values of a message one after the other. In the place of a value of another type than expected
/// it gives an empty one: anybody may own the name while Tolmi does not run.
class Reader {
public:
    explicit Reader(DBusMessage *message)
        : m_hasContent(dbus_message_iter_init(message, &m_iterator)) { }

    bool hasMore() { return type() != DBUS_TYPE_INVALID; }

    std::string string() {
        const char *text = "";
        read(DBUS_TYPE_STRING, &text);
        return text;
    }
    bool boolean() {
        dbus_bool_t value = FALSE;
        read(DBUS_TYPE_BOOLEAN, &value);
        return value;
    }
    double number() {
        double value = 0;
        read(DBUS_TYPE_DOUBLE, &value);
        return value;
    }
    /// The content of an array, a structure, an entry or a variant.
    Reader inside() {
        Reader content;
        content.m_hasContent = hasMore() && dbus_type_is_container(type());
        if (content.m_hasContent)
            dbus_message_iter_recurse(&m_iterator, &content.m_iterator);
        next();
        return content;
    }

private:
    Reader() = default;

    int type() { return m_hasContent ? dbus_message_iter_get_arg_type(&m_iterator) : DBUS_TYPE_INVALID; }
    void next() {
        if (hasMore())
            dbus_message_iter_next(&m_iterator);
    }
    void read(int expected, void *value) {
        if (type() == expected)
            dbus_message_iter_get_basic(&m_iterator, value);
        next();
    }

    DBusMessageIter m_iterator {};
    bool m_hasContent = false;
};

/// Takes over the values of a dictionary of properties.
void update(Status &status, Reader properties) {
    while (properties.hasMore()) {
        Reader entry = properties.inside();
        const std::string name = entry.string();
        Reader value = entry.inside();
        if (name == "State")
            status.state = value.string();
        else if (name == "LastError")
            status.lastError = value.string();
        else if (name == "Version")
            status.version = value.string();
        else if (name == "Level")
            status.level = value.number();
    }
}
} // namespace

void Bus::Close::operator()(DBusConnection *connection) const {
    dbus_connection_close(connection);
    dbus_connection_unref(connection);
}

void Bus::Unreference::operator()(DBusMessage *message) const {
    dbus_message_unref(message);
}

Bus::Bus() {
    Error error;
    m_connection.reset(dbus_bus_get_private(DBUS_BUS_SESSION, error.get()));
    if (!m_connection)
        throw notRunning("There is no session bus to reach Tolmi by: " + error.message());
    dbus_connection_set_exit_on_disconnect(m_connection.get(), FALSE);
}

void Bus::call(const std::string &method, std::optional<uint64_t> time) {
    const Message call = message(interfaceName, method.c_str());
    if (time) {
        const dbus_uint64_t argument = *time;
        dbus_message_append_args(call.get(), DBUS_TYPE_UINT64, &argument, DBUS_TYPE_INVALID);
    }
    answer(call);
}

Status Bus::status() {
    const Message call = message(DBUS_INTERFACE_PROPERTIES, "GetAll");
    const char *interface = interfaceName;
    dbus_message_append_args(call.get(), DBUS_TYPE_STRING, &interface, DBUS_TYPE_INVALID);
    const Message reply = answer(call);
    Status status;
    update(status, Reader(reply.get()).inside());
    return status;
}

std::vector<OperationRow> Bus::methods() {
    const Message reply = answer(message(interfaceName, "Doctor"));
    std::vector<OperationRow> rows;
    for (Reader array = Reader(reply.get()).inside(); array.hasMore();) {
        Reader row = array.inside();
        OperationRow read;
        read.operation = row.string();
        read.method = row.string();
        read.isAvailable = row.boolean();
        read.reason = row.string();
        rows.push_back(std::move(read));
    }
    return rows;
}

void Bus::follow(const std::function<void(const Status &)> &observer) {
    const std::string bus = std::string("type='signal',sender='") + DBUS_SERVICE_DBUS + "',interface='"
        + DBUS_INTERFACE_DBUS + "',member='NameOwnerChanged',arg0='" + serviceName + '\'';
    const std::string properties = std::string("type='signal',sender='") + serviceName + "',path='"
        + objectPath + "',interface='" + DBUS_INTERFACE_PROPERTIES + "',member='PropertiesChanged'";
    match(bus);
    match(properties);
    Status current = status();
    current.level.reset();
    observer(current);
    while (true) {
        const Message signal = nextSignal();
        if (dbus_message_is_signal(signal.get(), DBUS_INTERFACE_DBUS, "NameOwnerChanged"))
            throw notRunning("Tolmi has ended.");
        if (!dbus_message_is_signal(signal.get(), DBUS_INTERFACE_PROPERTIES, "PropertiesChanged"))
            continue;
        Status changed = current;
        Reader reader(signal.get());
        if (reader.string() == interfaceName)
            update(changed, reader.inside());
        // What had changed before the first question is told once more.
        if (changed == current)
            continue;
        current = changed;
        observer(current);
    }
}

Bus::Message Bus::message(const char *interface, const char *member) const {
    Message call(dbus_message_new_method_call(serviceName, objectPath, interface, member));
    dbus_message_set_auto_start(call.get(), FALSE);
    return call;
}

Bus::Message Bus::answer(const Message &call) {
    Error error;
    Message reply(dbus_connection_send_with_reply_and_block(
        m_connection.get(), call.get(), patienceMilliseconds, error.get()));
    if (!reply)
        throw failureOf(error);
    return reply;
}

void Bus::match(const std::string &rule) {
    Error error;
    dbus_bus_add_match(m_connection.get(), rule.c_str(), error.get());
    if (dbus_error_is_set(error.get()))
        throw failureOf(error);
}

Bus::Message Bus::nextSignal() {
    while (true) {
        if (Message message { dbus_connection_pop_message(m_connection.get()) })
            return message;
        if (!dbus_connection_read_write(m_connection.get(), -1))
            throw notRunning("The session bus has ended.");
    }
}
