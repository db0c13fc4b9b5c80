#include "Support/FakePasteboard.h"
#include "Support/FlowOverFakes.h"
#include "Support/SettingsModelOverFakes.h"
#include "TolmiApp/MenuBarPopupModel.h"
#include "TolmiApp/OverlayPanel.h"
#include "TolmiApp/ViewTexts.h"
#include "Views/CommandCenterStage.h"
#include "Views/DictationLiveStage.h"
#include "Views/HealthStage.h"
#include "Views/OnboardingStage.h"
#include "Views/TemplatesStage.h"
#include "Views/ViewsFixture.h"

#include <QDir>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

namespace {

class QmlFiles : public ViewsTest { };

/// What the views of the flow's workspaces need.
class FlowRequirements {
public:
    QVariantMap of(const QString &file) { return m_requirements.value(file); }

private:
    template <typename Stage>
    static QVariantMap modelOf(Stage &stage) {
        return { { QStringLiteral("model"), QVariant::fromValue(stage.model()) },
            { QStringLiteral("texts"), QVariant::fromValue(stage.texts()) } };
    }

    CommandCenterStage m_commandCenter;
    DictationLiveStage m_live;
    OnboardingStage m_onboarding;
    const QHash<QString, QVariantMap> m_requirements {
        { QStringLiteral("StudioCommandCenterView.qml"), modelOf(m_commandCenter) },
        { QStringLiteral("StudioDictationLiveView.qml"), modelOf(m_live) },
        { QStringLiteral("OnboardingWizardView.qml"), modelOf(m_onboarding) },
        { QStringLiteral("OnboardingProfilePanel.qml"), modelOf(m_onboarding) },
        { QStringLiteral("OnboardingPermissionsPanel.qml"), modelOf(m_onboarding) },
        { QStringLiteral("OnboardingDictationPanel.qml"), modelOf(m_onboarding) },
        { QStringLiteral("DictationButton.qml"),
            { { QStringLiteral("dictation"), QVariant::fromValue(m_live.model()->dictation()) } } },
    };
};

QStringList filesOfModule() {
    return QDir(QStringLiteral(":/qt/qml/Tolmi")).entryList({ QStringLiteral("*.qml") });
}

} // namespace

TEST_F(QmlFiles, EveryOneIsMadeAndShownWithoutAWarning) {
    const QStringList files = filesOfModule();
    ASSERT_GT(files.size(), 40);
    OverlayViewModel model;
    FlowRequirements workspaces;
    FlowOverFakes flow;
    FakePasteboard pasteboard;
    MenuBarPopupModel popup(flow.flow, pasteboard, {});
    ViewTexts texts(flow.store, PlatformTexts::forLinux());
    const QStringList popupFiles { QStringLiteral("MenuBarPopupView.qml"),
        QStringLiteral("PopupControls.qml"), QStringLiteral("PopupHeader.qml"),
        QStringLiteral("PopupStatus.qml") };
    SettingsModelOverFakes settings;
    const QStringList settingsFiles { QStringLiteral("EngineSettingsTab.qml"),
        QStringLiteral("GeneralSettingsTab.qml"), QStringLiteral("RefinementSettingsTab.qml"),
        QStringLiteral("SettingsView.qml") };
    HealthStage health;
    TemplatesStage templates;
    QQuickWindow window;
    window.resize(600, 400);
    QQuickItem anchor(window.contentItem());
    for (const QString &file : files) {
        SCOPED_TRACE(file.toStdString());
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/qt/qml/Tolmi/") + file));
        ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
        QVariantMap required = workspaces.of(file);
        if (file == QStringLiteral("OverlayContentView.qml"))
            required.insert(QStringLiteral("viewModel"), QVariant::fromValue(&model));
        if (file == QStringLiteral("HealthCheckRow.qml"))
            required.insert(QStringLiteral("item"), QVariant::fromValue(health.model()->items().first()));
        if (file == QStringLiteral("StudioHealthView.qml"))
            required = { { QStringLiteral("model"), QVariant::fromValue(health.model()) },
                { QStringLiteral("texts"), QVariant::fromValue(health.texts()) } };
        if (file == QStringLiteral("StudioTemplatesView.qml"))
            required = { { QStringLiteral("model"), QVariant::fromValue(templates.model()) },
                { QStringLiteral("texts"), QVariant::fromValue(templates.texts()) } };
        if (file == QStringLiteral("OverlayToolTip.qml"))
            required.insert(QStringLiteral("anchorItem"), QVariant::fromValue(&anchor));
        if (popupFiles.contains(file))
            required = { { QStringLiteral("model"), QVariant::fromValue(&popup) },
                { QStringLiteral("texts"), QVariant::fromValue<QObject *>(&texts) } };
        if (settingsFiles.contains(file))
            required = { { QStringLiteral("model"), QVariant::fromValue(&settings.model) },
                { QStringLiteral("texts"), QVariant::fromValue<QObject *>(&texts) } };
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
