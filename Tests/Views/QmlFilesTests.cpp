#include "Support/FakeDesktopLook.h"
#include "Support/FakeFlowCollaborators.h"
#include "Support/SettingsOverFakes.h"
#include "TolmiApp/OverlayPanel.h"
#include "TolmiApp/TolmiStudioWindowModel.h"
#include "TolmiApp/ViewAppearance.h"
#include "TolmiApp/ViewTexts.h"
#include "Views/ViewsFixture.h"

#include <QDir>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

namespace {

class QmlFiles : public ViewsTest { };

/// What the files of the Studio's window need.
class StudioRequirements {
public:
    StudioRequirements(QQmlEngine &engine, const SettingsStore &settings, ViewTexts &texts)
        : m_model(settings, m_router, {})
        , m_texts(texts)
        , m_nothing(engine.evaluate(QStringLiteral("(function() { return null })"))) { }

    QVariantMap of(const QString &file) {
        QVariantMap required { { QStringLiteral("texts"), QVariant::fromValue(&m_texts) } };
        if (file == QStringLiteral("ModelLoader.qml")) {
            required.insert(QStringLiteral("makeModel"), QVariant::fromValue(m_nothing));
            required.insert(QStringLiteral("view"), QUrl());
            return required;
        }
        required.insert(QStringLiteral("model"), QVariant::fromValue(&m_model));
        if (file == QStringLiteral("TolmiStudioWindowView.qml")
            || file == QStringLiteral("StudioSidebar.qml"))
            return required;
        required.insert(QStringLiteral("name"), QStringLiteral("health"));
        required.insert(QStringLiteral("title"), QStringLiteral("Health"));
        required.insert(QStringLiteral("view"), QUrl());
        return file == QStringLiteral("StudioWorkspace.qml") ? required : QVariantMap();
    }

private:
    FlowJournal m_journal;
    FakeApplication m_application { m_journal };
    StudioRouter m_router { m_application };
    TolmiStudioWindowModel m_model;
    ViewTexts &m_texts;
    const QJSValue m_nothing;
};

QStringList filesOfModule() {
    return QDir(QStringLiteral(":/qt/qml/Tolmi")).entryList({ QStringLiteral("*.qml") });
}

} // namespace

TEST_F(QmlFiles, EveryOneIsMadeAndShownWithoutAWarning) {
    const QStringList files = filesOfModule();
    ASSERT_GT(files.size(), 40);
    OverlayViewModel model;
    SettingsOverFakes settings;
    ViewTexts texts(settings.store, PlatformTexts::forLinux());
    StudioRequirements studio(engine, settings.store, texts);
    const FakeDesktopLook look;
    auto *appearance = new ViewAppearance(engine, settings.store, look);
    QQuickWindow window;
    window.resize(600, 400);
    QQuickItem anchor(window.contentItem());
    for (const QString &file : files) {
        SCOPED_TRACE(file.toStdString());
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Tolmi/") + file));
        ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
        QVariantMap required;
        if (file == QStringLiteral("OverlayContentView.qml"))
            required.insert(QStringLiteral("viewModel"), QVariant::fromValue(&model));
        if (file == QStringLiteral("AppearanceLink.qml"))
            required.insert(QStringLiteral("appearance"), QVariant::fromValue<QObject *>(appearance));
        required.insert(studio.of(file));
        if (file == QStringLiteral("OverlayToolTip.qml"))
            required.insert(QStringLiteral("anchorItem"), QVariant::fromValue(&anchor));
        const bool isSingleton = file == QStringLiteral("Metrics.qml") || file == QStringLiteral("Motion.qml")
            || file == QStringLiteral("TolmiPalette.qml") || file == QStringLiteral("Typography.qml");
        if (isSingleton)
            continue;
        const std::unique_ptr<QObject> object(component.createWithInitialProperties(required));
        ASSERT_TRUE(object) << component.errorString().toStdString();
        if (auto *item = qobject_cast<QQuickItem *>(object.get())) {
            item->setParentItem(window.contentItem());
            window.show();
            QCoreApplication::processEvents();
            EXPECT_FALSE(window.grabWindow().isNull());
        }
        const QStringList warnings = takeWarnings();
        EXPECT_TRUE(warnings.isEmpty()) << warnings.join(QLatin1Char('\n')).toStdString();
    }
}
