#include "Desktop/StatusNotifierHost.h"

#include <QDBusObjectPath>
#include <QDBusVariant>
#include <QtEndian>

#include <gtest/gtest.h>

namespace {

const QString watcherName = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");
const QString menuInterface = QStringLiteral("com.canonical.dbusmenu");

} // namespace

StatusNotifierHost::StatusNotifierHost() {
    EXPECT_TRUE(m_bus.registerObject(QStringLiteral("/StatusNotifierWatcher"), this,
        QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties
            | QDBusConnection::ExportAllSignals));
    EXPECT_TRUE(m_bus.registerService(watcherName));
}

StatusNotifierHost::~StatusNotifierHost() {
    m_bus.unregisterService(watcherName);
    QDBusConnection::disconnectFromBus(m_bus.name());
}

void StatusNotifierHost::setHasHost(bool hasHost) {
    m_hasHost = hasHost;
    if (hasHost)
        Q_EMIT StatusNotifierHostRegistered();
}

void StatusNotifierHost::RegisterStatusNotifierItem(const QString &service) {
    m_items.append(service.startsWith(u'/') ? message().service() : service);
    Q_EMIT StatusNotifierItemRegistered(m_items.last());
}

QVariant StatusNotifierHost::property(const char *name) const {
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_items.value(0), itemPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << itemInterface << QString::fromLatin1(name);
    const QDBusMessage answer = m_bus.call(call, QDBus::BlockWithGui);
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    return answer.arguments().value(0).value<QDBusVariant>().variant();
}

QList<QImage> StatusNotifierHost::images() const {
    QList<QImage> images;
    const auto pixmaps = property("IconPixmap").value<QDBusArgument>();
    pixmaps.beginArray();
    while (!pixmaps.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray bytes;
        pixmaps.beginStructure();
        pixmaps >> width >> height >> bytes;
        pixmaps.endStructure();
        QImage image(width, height, QImage::Format_ARGB32);
        for (int pixel = 0; pixel < width * height; ++pixel)
            image.setPixel(pixel % width, pixel / width, qFromBigEndian<QRgb>(bytes.constData() + 4 * pixel));
        images.append(image);
    }
    pixmaps.endArray();
    return images;
}

void StatusNotifierHost::activate(const QPoint &point) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        m_items.value(0), itemPath, itemInterface, QStringLiteral("Activate"));
    call << point.x() << point.y();
    const QDBusMessage answer = m_bus.call(call, QDBus::BlockWithGui);
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
}

QStringList StatusNotifierHost::menu() const {
    QStringList labels;
    for (const MenuLine &line : menuLines())
        labels.append(line.label);
    return labels;
}

void StatusNotifierHost::choose(const QString &label) const {
    for (const MenuLine &line : menuLines()) {
        if (line.label == label) {
            callMenu(QStringLiteral("Event"),
                { line.number, QStringLiteral("clicked"), QVariant::fromValue(QDBusVariant(QString())),
                    QVariant::fromValue(quint32(0)) });
            return;
        }
    }
    ADD_FAILURE() << label.toStdString() << " is no line of the menu";
}

QDBusMessage StatusNotifierHost::callMenu(const QString &method, const QVariantList &arguments) const {
    const auto path = property("Menu").value<QDBusObjectPath>();
    QDBusMessage call = QDBusMessage::createMethodCall(m_items.value(0), path.path(), menuInterface, method);
    call.setArguments(arguments);
    const QDBusMessage answer = m_bus.call(call, QDBus::BlockWithGui);
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
    return answer;
}

QList<StatusNotifierHost::MenuLine> StatusNotifierHost::menuLines() const {
    constexpr int wholeMenu = 0, allLevels = -1;
    const QDBusMessage answer
        = callMenu(QStringLiteral("GetLayout"), { wholeMenu, allLevels, QStringList() });
    return linesIn(answer.arguments().value(1).value<QDBusArgument>());
}

/// What GetLayout answers: (number, properties, children), the children of the same kind.
QList<StatusNotifierHost::MenuLine> StatusNotifierHost::linesIn(const QDBusArgument &layout) {
    int number = 0;
    QVariantMap properties;
    QVariantList children;
    layout.beginStructure();
    layout >> number >> properties >> children;
    layout.endStructure();
    QList<MenuLine> lines;
    if (properties.contains(QStringLiteral("label")))
        lines.append({ number, properties.value(QStringLiteral("label")).toString() });
    for (const QVariant &child : children)
        lines += linesIn(child.value<QDBusArgument>());
    return lines;
}
