#include "TolmiApp/Shell/Views.h"
#include "Views/CommandCenterFixture.h"
#include "Views/DictationLiveFixture.h"
#include "Views/HealthFixture.h"
#include "Views/HistoryFixture.h"
#include "Views/KeyHolder.h"
#include "Views/OnboardingFixture.h"
#include "Views/PopupFixture.h"
#include "Views/ProfileFixture.h"
#include "Views/SettingsFixture.h"
#include "Views/StudioWindowFixture.h"
#include "Views/TemplatesFixture.h"
#include "Views/UpdateDialogFixture.h"

#include <QQmlEngine>
#include <QtQuickTest>

/// Makes the interface's QML module available to the test files.
class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() {
        Views::prepareApplication();
        qmlRegisterType<CommandCenterFixture>("TolmiTesting", 1, 0, "CommandCenterFixture");
        qmlRegisterType<DictationLiveFixture>("TolmiTesting", 1, 0, "DictationLiveFixture");
        qmlRegisterType<HealthFixture>("TolmiTesting", 1, 0, "HealthFixture");
        qmlRegisterType<HistoryFixture>("TolmiTesting", 1, 0, "HistoryFixture");
        qmlRegisterType<KeyHolder>("TolmiTesting", 1, 0, "KeyHolder");
        qmlRegisterType<OnboardingFixture>("TolmiTesting", 1, 0, "OnboardingFixture");
        qmlRegisterType<PopupFixture>("TolmiTesting", 1, 0, "PopupFixture");
        qmlRegisterType<ProfileFixture>("TolmiTesting", 1, 0, "ProfileFixture");
        qmlRegisterType<SettingsFixture>("TolmiTesting", 1, 0, "SettingsFixture");
        qmlRegisterType<StudioWindowFixture>("TolmiTesting", 1, 0, "StudioWindowFixture");
        qmlRegisterType<TemplatesFixture>("TolmiTesting", 1, 0, "TemplatesFixture");
        qmlRegisterType<UpdateDialogFixture>("TolmiTesting", 1, 0, "UpdateDialogFixture");
    }
    void qmlEngineAvailable(QQmlEngine *engine) { Views::prepareEngine(*engine); }
};

QUICK_TEST_MAIN_WITH_SETUP(tolmi, Setup)

#include "QuickTests.moc"
