#include "TolmiApp/Shell/Views.h"
#include "Views/CommandCenterStage.h"
#include "Views/DictationLiveStage.h"
#include "Views/HealthStage.h"
#include "Views/HistoryFixture.h"
#include "Views/OnboardingStage.h"
#include "Views/PopupFixture.h"
#include "Views/ProfileFixture.h"
#include "Views/SettingsFixture.h"
#include "Views/StudioStage.h"
#include "Views/TemplatesStage.h"
#include "Views/UpdateStage.h"

#include <QQmlEngine>
#include <QtQuickTest>

/// Gives the test files the module of the interface.
class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() {
        Views::prepareApplication();
        qmlRegisterType<CommandCenterStage>("TolmiTesting", 1, 0, "CommandCenterStage");
        qmlRegisterType<DictationLiveStage>("TolmiTesting", 1, 0, "DictationLiveStage");
        qmlRegisterType<HealthStage>("TolmiTesting", 1, 0, "HealthStage");
        qmlRegisterType<HistoryFixture>("TolmiTesting", 1, 0, "HistoryFixture");
        qmlRegisterType<OnboardingStage>("TolmiTesting", 1, 0, "OnboardingStage");
        qmlRegisterType<PopupFixture>("TolmiTesting", 1, 0, "PopupFixture");
        qmlRegisterType<ProfileFixture>("TolmiTesting", 1, 0, "ProfileFixture");
        qmlRegisterType<SettingsFixture>("TolmiTesting", 1, 0, "SettingsFixture");
        qmlRegisterType<StudioStage>("TolmiTesting", 1, 0, "StudioStage");
        qmlRegisterType<TemplatesStage>("TolmiTesting", 1, 0, "TemplatesStage");
        qmlRegisterType<UpdateStage>("TolmiTesting", 1, 0, "UpdateStage");
    }
    void qmlEngineAvailable(QQmlEngine *engine) { Views::prepareEngine(*engine); }
};

QUICK_TEST_MAIN_WITH_SETUP(tolmi, Setup)

#include "QuickTests.moc"
