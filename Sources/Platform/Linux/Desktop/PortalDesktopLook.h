#pragma once

#include "Platform/DesktopLook.h"

#include <QDBusConnection>
#include <QDBusVariant>

/// The look reported by the desktop portal over D-Bus. It is queried asynchronously; until it answers, or if
/// there is no portal, there is no preference.
class PortalDesktopLook final : public DesktopLook {
    Q_OBJECT

public:
    explicit PortalDesktopLook(const QDBusConnection &bus = QDBusConnection::sessionBus());

    /// The look of the panel on a desktop of these names, as in XDG_CURRENT_DESKTOP, whose windows look thus.
    static Appearance panelAppearance(const QByteArray &desktopNames, std::optional<Appearance> windows);

    std::optional<Appearance> appearance() const override { return m_appearance; }
    Appearance panelAppearance() const override;
    bool isMotionReduced() const override { return m_isMotionReduced; }

private Q_SLOTS:
    void readChange(const QString &space, const QString &key, const QDBusVariant &value);

private:
    void askForAll(QDBusConnection bus);
    void take(const QString &space, const QString &key, const QVariant &value);
    void takeAppearance(std::optional<Appearance> appearance);
    void takeMotion(bool isReduced);

    std::optional<Appearance> m_appearance;
    bool m_isMotionReduced = false;
};
