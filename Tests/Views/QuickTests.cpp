#include "TolmiApp/Views.h"
#include "Views/CommandCenterStage.h"
#include "Views/DictationLiveStage.h"
#include "Views/OnboardingStage.h"

#include <QQmlEngine>
#include <QtQuickTest>

/// Gives the test files the module of the interface.
class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() { Views::prepareApplication(); }
    void qmlEngineAvailable(QQmlEngine *engine) {
        Views::prepareEngine(*engine);
        qmlRegisterType<CommandCenterStage>("TolmiTesting", 1, 0, "CommandCenterStage");
        qmlRegisterType<DictationLiveStage>("TolmiTesting", 1, 0, "DictationLiveStage");
        qmlRegisterType<OnboardingStage>("TolmiTesting", 1, 0, "OnboardingStage");
    }
};

QUICK_TEST_MAIN_WITH_SETUP(tolmi, Setup)

#include "QuickTests.moc"
