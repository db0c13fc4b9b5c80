#include "Platform/Linux/Desktop/PortalDesktopLook.h"

#include "Support/DesktopLookContract.h"

#include <QDBusContext>
#include <QDBusMetaType>
#include <QMap>

using Namespaces = QMap<QString, QVariantMap>;
Q_DECLARE_METATYPE(Namespaces)

namespace {
const QString appearanceSpace = QStringLiteral("org.freedesktop.appearance");
const QString colorScheme = QStringLiteral("color-scheme");
const QString reducedMotion = QStringLiteral("reduced-motion");
} // namespace

/// The part of a desktop's portal that tells settings.
class FakePortal : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    FakePortal() {
        qDBusRegisterMetaType<Namespaces>();
        m_bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
            QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllSignals);
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop")));
    }
    ~FakePortal() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    void change(const QString &space, const QString &key, const QVariant &value) {
        settings[space][key] = value;
        Q_EMIT SettingChanged(space, key, QDBusVariant(value));
    }

    Namespaces settings;
    int readCount = 0;

public Q_SLOTS:
    Namespaces ReadAll(const QStringList &spaces) {
        ++readCount;
        Namespaces asked;
        for (const QString &space : spaces) {
            if (settings.contains(space))
                asked[space] = settings[space];
        }
        return asked;
    }

Q_SIGNALS:
    void SettingChanged(const QString &space, const QString &key, const QDBusVariant &value);

private:
    QDBusConnection m_bus
        = QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("portal"));
};

namespace {

class MadeReal {
public:
    MadeReal() {
        EXPECT_TRUE(untilTrue([this] { return m_portal.readCount == 1; }));
    }

    DesktopLook &look() { return m_look; }
    void choose(std::optional<Appearance> appearance) {
        m_portal.change(
            appearanceSpace, colorScheme, appearance ? *appearance == Appearance::Dark ? 1U : 2U : 0U);
    }
    void reduceMotion(bool isReduced) {
        m_portal.change(appearanceSpace, reducedMotion, isReduced ? 1U : 0U);
    }

private:
    FakePortal m_portal;
    PortalDesktopLook m_look;
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Portal, DesktopLookContract, MadeReal);

TEST(PortalDesktopLook, AsksForWhatIsSetAlready) {
    FakePortal portal;
    portal.settings[appearanceSpace] = { { colorScheme, 1U }, { reducedMotion, 1U } };
    const PortalDesktopLook look;
    EXPECT_TRUE(
        untilTrue([&look] { return look.appearance() == Appearance::Dark && look.isMotionReduced(); }));
}

TEST(PortalDesktopLook, HearsOfMotionFromOlderDesktops) {
    FakePortal portal;
    portal.settings[QStringLiteral("org.gnome.desktop.interface")]
        = { { QStringLiteral("enable-animations"), false } };
    const PortalDesktopLook look;
    EXPECT_TRUE(untilTrue([&look] { return look.isMotionReduced(); }));
    portal.change(QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("enable-animations"), true);
    EXPECT_TRUE(untilTrue([&look] { return !look.isMotionReduced(); }));
    portal.change(QStringLiteral("org.kde.kdeglobals.KDE"), QStringLiteral("AnimationDurationFactor"),
        QStringLiteral("0"));
    EXPECT_TRUE(untilTrue([&look] { return look.isMotionReduced(); }));
}

TEST(PortalDesktopLook, HasNoPreferenceWithoutABus) {
    const PortalDesktopLook look(QDBusConnection(QStringLiteral("nowhere")));
    EXPECT_EQ(look.appearance(), std::nullopt);
    EXPECT_FALSE(look.isMotionReduced());
}

TEST(PortalDesktopLook, KnowsPanelsThatAreDarkWhateverTheWindowsAre) {
    struct Row {
        const char *desktop;
        std::optional<Appearance> windows;
        Appearance panel;
    };
    const Row table[] { { "KDE", Appearance::Light, Appearance::Light },
        { "KDE", Appearance::Dark, Appearance::Dark }, { "XFCE", std::nullopt, Appearance::Dark },
        { "", Appearance::Light, Appearance::Light }, { "ubuntu:GNOME", Appearance::Light, Appearance::Dark },
        { "X-Cinnamon", Appearance::Light, Appearance::Dark },
        { "GNOMEish", Appearance::Light, Appearance::Light } };
    for (const Row &row : table)
        EXPECT_EQ(PortalDesktopLook::panelAppearance(row.desktop, row.windows), row.panel) << row.desktop;
}

#include "PortalDesktopLookTests.moc"
