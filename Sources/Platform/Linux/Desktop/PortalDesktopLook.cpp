#include "Platform/Linux/Desktop/PortalDesktopLook.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QMap>

namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
// Older portals have no key for reduced motion, but pass on the settings of GNOME and KDE.
const QString gnomeSpace = QStringLiteral("org.gnome.desktop.interface");
const QString plasmaSpace = QStringLiteral("org.kde.kdeglobals.KDE");

using Namespaces = QMap<QString, QVariantMap>;

std::optional<Appearance> appearanceOf(uint colorScheme) {
    switch (colorScheme) {
    case 1:
        return Appearance::Dark;
    case 2:
        return Appearance::Light;
    default:
        return std::nullopt;
    }
}

} // namespace

PortalDesktopLook::PortalDesktopLook(const QDBusConnection &bus) {
    if (!bus.isConnected())
        return;
    // Connecting a slot whose argument type is not registered fails silently.
    qRegisterMetaType<QDBusVariant>();
    // Connect before asking, so that no change is missed in between.
    QDBusConnection(bus).connect(service, path, interface, QStringLiteral("SettingChanged"), this,
        SLOT(readChange(QString, QString, QDBusVariant)));
    askForAll(bus);
}

Appearance PortalDesktopLook::panelAppearance() const {
    return panelAppearance(qgetenv("XDG_CURRENT_DESKTOP"), m_appearance);
}

// Nobody tells the colour of a panel. Most are dark unless the windows are wanted light, and some always are.
Appearance PortalDesktopLook::panelAppearance(
    const QByteArray &desktopNames, std::optional<Appearance> windows) {
    for (const QByteArray &name : desktopNames.split(':')) {
        if (name == "GNOME" || name == "Unity" || name == "X-Cinnamon")
            return Appearance::Dark;
    }
    return windows.value_or(Appearance::Dark);
}

void PortalDesktopLook::askForAll(QDBusConnection bus) {
    qDBusRegisterMetaType<Namespaces>();
    auto query = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("ReadAll"));
    query << QStringList { appearanceSpace, gnomeSpace, plasmaSpace };
    auto *watcher = new QDBusPendingCallWatcher(bus.asyncCall(query), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        watcher->deleteLater();
        const QDBusPendingReply<Namespaces> answer = *watcher;
        if (answer.isError())
            return;
        const Namespaces spaces = answer.value();
        for (auto space = spaces.begin(); space != spaces.end(); ++space) {
            for (auto setting = space->begin(); setting != space->end(); ++setting)
                take(space.key(), setting.key(), setting.value());
        }
    });
}

void PortalDesktopLook::readChange(const QString &space, const QString &key, const QDBusVariant &value) {
    take(space, key, value.variant());
}

void PortalDesktopLook::take(const QString &space, const QString &key, const QVariant &value) {
    if (space == appearanceSpace && key == QStringLiteral("color-scheme"))
        takeAppearance(appearanceOf(value.toUInt()));
    if (space == appearanceSpace && key == QStringLiteral("reduced-motion"))
        takeMotion(value.toUInt() == 1);
    if (space == gnomeSpace && key == QStringLiteral("enable-animations"))
        takeMotion(!value.toBool());
    if (space == plasmaSpace && key == QStringLiteral("AnimationDurationFactor"))
        takeMotion(value.toDouble() == 0);
}

void PortalDesktopLook::takeAppearance(std::optional<Appearance> appearance) {
    if (std::exchange(m_appearance, appearance) != appearance)
        Q_EMIT changed();
}

void PortalDesktopLook::takeMotion(bool isReduced) {
    if (std::exchange(m_isMotionReduced, isReduced) != isReduced)
        Q_EMIT changed();
}
