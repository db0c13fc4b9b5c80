#include "Platform/Linux/Desktop/DBusRemoteControl.h"

#include "Foundation/Log.h"
#include "Platform/Linux/Desktop/ControlInterface.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <algorithm>
#include <array>
#include <ctime>

namespace {
const QString serviceName = QStringLiteral("org.tolmi.Tolmi");
const QString objectPath = QStringLiteral("/org/tolmi/Tolmi1");
const QString interfaceName = QStringLiteral("org.tolmi.Tolmi1");
const QString propertiesInterface = QStringLiteral("org.freedesktop.DBus.Properties");
const QString busName = QStringLiteral("org.freedesktop.DBus");
const QString busPath = QStringLiteral("/org/freedesktop/DBus");
const QString ownerSignal = QStringLiteral("NameOwnerChanged");

struct Method {
    const char *name;
    RemoteCommand command;
    const char *signature = "";
};
constexpr std::array methods { Method { "Press", RemoteCommand::Press },
    Method { "Release", RemoteCommand::Release }, Method { "KeyDown", RemoteCommand::KeyDown, "t" },
    Method { "KeyUp", RemoteCommand::KeyUp, "t" }, Method { "Start", RemoteCommand::Start },
    Method { "Stop", RemoteCommand::Stop }, Method { "Toggle", RemoteCommand::Toggle },
    Method { "ShowStudio", RemoteCommand::ShowStudio },
    Method { "ShowSettings", RemoteCommand::ShowSettings }, Method { "Quit", RemoteCommand::Quit } };

QDBusMessage refusal(const QDBusMessage &message, RemoteRefusal reason) {
    const QString error = interfaceName + QStringLiteral(".Error.");
    switch (reason) {
    case RemoteRefusal::Locked:
        return message.createErrorReply(
            error + QStringLiteral("Locked"), QStringLiteral("The session is locked."));
    case RemoteRefusal::Busy:
        return message.createErrorReply(
            error + QStringLiteral("Busy"), QStringLiteral("The last dictation is not over yet."));
    case RemoteRefusal::HeldElsewhere:
        return message.createErrorReply(
            error + QStringLiteral("Held"), QStringLiteral("The dictation key is held by somebody else."));
    }
    Q_UNREACHABLE();
}

quint64 microsecondsSinceStart() {
    timespec now {};
    clock_gettime(CLOCK_BOOTTIME, &now);
    return quint64(now.tv_sec) * 1000000 + quint64(now.tv_nsec) / 1000;
}

QDBusMessage busCall(const QString &member) {
    return QDBusMessage::createMethodCall(busName, busPath, busName, member);
}

} // namespace

static QDBusArgument &operator<<(QDBusArgument &argument, const OperationMethod &row) {
    argument.beginStructure();
    argument << row.operation << row.method << row.isAvailable << row.reason;
    argument.endStructure();
    return argument;
}

static const QDBusArgument &operator>>(const QDBusArgument &argument, OperationMethod &row) {
    argument.beginStructure();
    argument >> row.operation >> row.method >> row.isAvailable >> row.reason;
    argument.endStructure();
    return argument;
}

DBusRemoteControl::DBusRemoteControl(const QDBusConnection &bus)
    : m_bus(bus) {
    qDBusRegisterMetaType<OperationMethod>();
    qDBusRegisterMetaType<QList<OperationMethod>>();
}

Availability DBusRemoteControl::serve(RemoteCommands &commands) {
    if (!m_bus.isConnected())
        return Availability::unavailable(QStringLiteral("there is no session bus"));
    m_commands = &commands;
    m_announced = properties();
    m_bus.registerVirtualObject(objectPath, this);
    requestName();
    return Availability::available();
}

// QDBusConnection::registerService() would wait for the bus.
void DBusRemoteControl::requestName() {
    constexpr uint waitInLine = 0;
    constexpr uint isInLine = 2;
    auto *watcher = new QDBusPendingCallWatcher(
        m_bus.asyncCall(busCall(QStringLiteral("RequestName")) << serviceName << waitInLine), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<uint> reply = *watcher;
        if (reply.isError())
            logLine(QStringLiteral("Tolmi: tolmictl will not work: ") + reply.error().message());
        else if (reply.value() == isInLine)
            logLine(QStringLiteral("Tolmi: tolmictl will not work before another program has given up the "
                                   "name %1 on the session bus.")
                        .arg(serviceName));
    });
}

void DBusRemoteControl::announce() {
    if (!m_commands)
        return;
    const QVariantMap now = properties();
    QVariantMap changed;
    for (const QString &name : { QStringLiteral("State"), QStringLiteral("LastError") }) {
        if (now.value(name) != m_announced.value(name))
            changed.insert(name, now.value(name));
    }
    m_announced = now;
    if (changed.isEmpty())
        return;
    auto signal
        = QDBusMessage::createSignal(objectPath, propertiesInterface, QStringLiteral("PropertiesChanged"));
    m_bus.send(signal << interfaceName << changed << QStringList());
}

/// What stands between the tags of the node.
QString DBusRemoteControl::introspect(const QString &) const {
    const QString whole = QString::fromUtf8(controlInterface);
    const qsizetype begin = whole.indexOf(QLatin1String("<interface"));
    return whole.mid(begin, whole.lastIndexOf(QLatin1String("</node>")) - begin);
}

bool DBusRemoteControl::handleMessage(const QDBusMessage &message, const QDBusConnection &) {
    const QDBusMessage reply = answer(message);
    // The caller is told that there is no such interface.
    if (reply.type() == QDBusMessage::InvalidMessage)
        return false;
    if (message.isReplyRequired())
        m_bus.send(reply);
    return true;
}

QDBusMessage DBusRemoteControl::answer(const QDBusMessage &message) {
    if (message.interface() == propertiesInterface)
        return propertyAnswer(message);
    if (!message.interface().isEmpty() && message.interface() != interfaceName)
        return {};
    if (message.member() == QLatin1String("Doctor"))
        return methodsAnswer(message);
    const auto *method = std::ranges::find_if(
        methods, [&](const Method &each) { return message.member() == QLatin1String(each.name); });
    if (method == methods.end())
        return message.createErrorReply(
            QDBusError::UnknownMethod, QStringLiteral("There is no method %1.").arg(message.member()));
    if (message.signature() != QLatin1String(method->signature))
        return message.createErrorReply(QDBusError::InvalidArgs,
            QStringLiteral("The arguments of %1 are \"%2\".")
                .arg(message.member(), QLatin1String(method->signature)));
    return commandAnswer(message, method->command);
}

QDBusMessage DBusRemoteControl::commandAnswer(const QDBusMessage &message, RemoteCommand command) {
    // Nobody can have been asked in the future.
    const quint64 time = std::min(message.arguments().value(0).toULongLong(), microsecondsSinceStart());
    const auto reason = m_commands->run({ command, message.service(), time });
    if (reason)
        return refusal(message, *reason);
    if (command == RemoteCommand::Press)
        watch(message.service());
    return message.createReply();
}

QDBusMessage DBusRemoteControl::methodsAnswer(const QDBusMessage &message) const {
    const std::vector<OperationMethod> rows = m_commands->methods();
    return message.createReply(QVariant::fromValue(QList<OperationMethod>(rows.begin(), rows.end())));
}

QDBusMessage DBusRemoteControl::propertyAnswer(const QDBusMessage &message) const {
    const QString member = message.member();
    const QVariantList arguments = message.arguments();
    const QString interface = arguments.value(0).toString();
    if (!interface.isEmpty() && interface != interfaceName)
        return message.createErrorReply(
            QDBusError::UnknownInterface, QStringLiteral("There is no interface %1 here.").arg(interface));
    if (member == QLatin1String("GetAll"))
        return message.createReply(properties());
    const QString name = arguments.value(1).toString();
    const QVariant value = properties().value(name);
    if (!value.isValid())
        return message.createErrorReply(
            QDBusError::UnknownProperty, QStringLiteral("There is no property %1.").arg(name));
    if (member == QLatin1String("Set"))
        return message.createErrorReply(
            QDBusError::PropertyReadOnly, QStringLiteral("%1 can only be read.").arg(name));
    return message.createReply(QVariant::fromValue(QDBusVariant(value)));
}

QVariantMap DBusRemoteControl::properties() const {
    const RemoteStatus status = m_commands->status();
    return { { QStringLiteral("State"), status.state }, { QStringLiteral("Level"), status.level },
        { QStringLiteral("LastError"), status.lastError }, { QStringLiteral("Version"), status.version } };
}

// The sender is left empty, since for a named one Qt would wait for the name of its owner. The question comes
// behind the match on the bus, so that a caller that has left before it is noticed too.
void DBusRemoteControl::watch(const QString &caller) {
    if (m_watched.contains(caller))
        return;
    m_watched.insert(caller);
    m_bus.connect({}, busPath, busName, ownerSignal, { caller }, {}, this, SLOT(ownerChanged(QDBusMessage)));
    auto *watcher = new QDBusPendingCallWatcher(
        m_bus.asyncCall(busCall(QStringLiteral("NameHasOwner")) << caller), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher, caller] {
        watcher->deleteLater();
        const QDBusPendingReply<bool> isThere = *watcher;
        if (!isThere.isError() && !isThere.value())
            leave(caller);
    });
}

void DBusRemoteControl::ownerChanged(const QDBusMessage &signal) {
    const QVariantList arguments = signal.arguments();
    if (signal.service() == busName && arguments.value(2).toString().isEmpty())
        leave(arguments.value(0).toString());
}

void DBusRemoteControl::leave(const QString &caller) {
    if (!m_watched.remove(caller))
        return;
    m_bus.disconnect(
        {}, busPath, busName, ownerSignal, { caller }, {}, this, SLOT(ownerChanged(QDBusMessage)));
    m_commands->callerLeft(caller);
}
