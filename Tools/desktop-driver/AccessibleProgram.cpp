#include "desktop-driver/AccessibleProgram.h"

#include "desktop-driver/AccessibleTree.h"
#include "dictate/Waiting.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusVariant>

#include <algorithm>

using State = AccessibleElement::State;

namespace {
QDBusMessage askLauncher(
    const QString &interface, const QString &method, const QVariantList &arguments = {}) {
    QDBusMessage message = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"), interface, method);
    message.setArguments(arguments);
    return QDBusConnection::sessionBus().call(message);
}

QDBusConnection accessibilityBus() {
    const QDBusReply<QString> address
        = askLauncher(QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    askLauncher(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Set"),
        { QStringLiteral("org.a11y.Status"), QStringLiteral("IsEnabled"),
            QVariant::fromValue(QDBusVariant(true)) });
    return QDBusConnection::connectToBus(address.value(), QStringLiteral("accessibility"));
}

bool shows(const AccessibleElement &element) {
    return element.is(State::Showing);
}
} // namespace

AccessibleProgram::AccessibleProgram(qint64 processId)
    : m_bus(accessibilityBus())
    , m_processId(processId) { }

AccessibleProgram AccessibleProgram::within(const AccessibleElement &element) const {
    AccessibleProgram limited = *this;
    limited.m_limit = element;
    return limited;
}

std::optional<AccessibleElement> AccessibleProgram::root() const {
    if (m_limit)
        return m_limit;
    const QString path = QStringLiteral("/org/a11y/atspi/accessible/root");
    for (const QString &service : m_bus.interface()->registeredServiceNames().value()) {
        // Only unique names: well-known ones belong to the bus and its registry.
        if (service.startsWith(u':') && m_bus.interface()->servicePid(service).value() == m_processId)
            return AccessibleElement(m_bus, { service, path });
    }
    return std::nullopt;
}

std::vector<AccessibleElement> AccessibleProgram::elements() const {
    const auto program = root();
    if (!program)
        return {};
    std::vector<AccessibleElement> elements = AccessibleTree::under(*program);
    elements.erase(elements.begin());
    elements.erase(std::remove_if(elements.begin(), elements.end(), std::not_fn(shows)), elements.end());
    return elements;
}

std::optional<AccessibleElement> AccessibleProgram::find(
    const QString &role, const QString &name, double seconds) const {
    std::optional<AccessibleElement> found;
    waitUntil(
        [&] {
            for (const AccessibleElement &each : elements()) {
                if (each.role() == role && (name.isEmpty() || each.name() == name)) {
                    found = each;
                    return true;
                }
            }
            return false;
        },
        seconds);
    return found;
}

QString AccessibleProgram::described() const {
    QString lines;
    for (const AccessibleElement &each : elements())
        lines += each.described() + u'\n';
    return lines;
}
