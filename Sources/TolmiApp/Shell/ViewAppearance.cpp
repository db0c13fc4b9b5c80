#include "TolmiApp/Shell/ViewAppearance.h"

#include "TolmiApp/Settings/SettingsStore.h"

#include <QQmlComponent>
#include <QQmlEngine>

ViewAppearance::ViewAppearance(QQmlEngine &engine, const SettingsStore &settings, const DesktopLook &look)
    : QObject(&engine)
    , m_settings(settings)
    , m_look(look) {
    connect(&settings, &SettingsStore::appearanceChanged, this, &ViewAppearance::changed);
    connect(&look, &DesktopLook::changed, this, &ViewAppearance::changed);
    link(engine);
}

bool ViewAppearance::isDark() const {
    const std::optional<Appearance> chosen = nsAppearance(m_settings.appearance());
    return (chosen ? chosen : m_look.appearance()) == Appearance::Dark;
}

// The palette and the motion are singletons of QML, which QML reaches best.
void ViewAppearance::link(QQmlEngine &engine) {
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Tolmi/AppearanceLink.qml")));
    QObject *link = component.createWithInitialProperties(
        { { QStringLiteral("appearance"), QVariant::fromValue<QObject *>(this) } });
    link->setParent(this);
}
