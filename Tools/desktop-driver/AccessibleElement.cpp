#include "desktop-driver/AccessibleElement.h"

#include "desktop-driver/AccessibleTree.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace {
constexpr uint screenCoordinates = 0;

QVariant propertyValue(const QDBusPendingCall &call) {
    QDBusPendingReply<QDBusVariant> reply = call;
    reply.waitForFinished();
    return reply.isError() ? QVariant() : reply.value().variant();
}
} // namespace

AccessibleElement::AccessibleElement(QDBusConnection bus, Address address)
    : m_bus(std::move(bus))
    , m_address(std::move(address)) { }

QRect AccessibleElement::rectangle() const {
    QDBusPendingCall answer
        = call(QStringLiteral("Component"), QStringLiteral("GetExtents"), { screenCoordinates });
    answer.waitForFinished();
    if (answer.isError())
        return {};
    const auto extents = answer.reply().arguments().value(0).value<QDBusArgument>();
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    extents.beginStructure();
    extents >> x >> y >> width >> height;
    extents.endStructure();
    return { x, y, width, height };
}

QString AccessibleElement::text() const {
    constexpr int toTheEnd = -1;
    QDBusPendingReply<QString> reply
        = call(QStringLiteral("Text"), QStringLiteral("GetText"), { 0, toTheEnd });
    reply.waitForFinished();
    // Qt reports line feeds as paragraph separators.
    return reply.isError() ? QString() : reply.value().replace(QChar::ParagraphSeparator, QChar::LineFeed);
}

std::optional<double> AccessibleElement::value() const {
    const QVariant value = propertyValue(property(QStringLiteral("Value"), QStringLiteral("CurrentValue")));
    return value.isValid() ? std::optional(value.toDouble()) : std::nullopt;
}

QStringList AccessibleElement::actions() const {
    QDBusPendingCall answer = call(QStringLiteral("Action"), QStringLiteral("GetActions"));
    answer.waitForFinished();
    QStringList names;
    if (answer.isError())
        return names;
    const auto list = answer.reply().arguments().value(0).value<QDBusArgument>();
    list.beginArray();
    while (!list.atEnd()) {
        QString name;
        QString description;
        QString keyBinding;
        list.beginStructure();
        list >> name >> description >> keyBinding;
        list.endStructure();
        names.append(name);
    }
    list.endArray();
    return names;
}

bool AccessibleElement::act(const QString &action) const {
    const qsizetype index = actions().indexOf(action);
    if (index < 0)
        return false;
    QDBusPendingReply<bool> reply
        = call(QStringLiteral("Action"), QStringLiteral("DoAction"), { int(index) });
    reply.waitForFinished();
    return !reply.isError();
}

AccessibleElement AccessibleElement::now() const {
    std::vector<AccessibleElement> one { *this };
    AccessibleTree::refresh(one);
    return one.front();
}

QString AccessibleElement::described() const {
    return role() + QStringLiteral(" \"") + name() + u'"';
}

QDBusPendingCall AccessibleElement::call(
    const QString &interface, const QString &method, const QVariantList &arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(
        m_address.service, m_address.path, QStringLiteral("org.a11y.atspi.") + interface, method);
    message.setArguments(arguments);
    return m_bus.asyncCall(message);
}

QDBusPendingCall AccessibleElement::property(const QString &interface, const QString &name) const {
    QDBusMessage message = QDBusMessage::createMethodCall(m_address.service, m_address.path,
        QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    message.setArguments({ QStringLiteral("org.a11y.atspi.") + interface, name });
    return m_bus.asyncCall(message);
}
