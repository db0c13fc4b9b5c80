#include "TolmiApp/Views.h"
#include "Views/StudioStage.h"

#include <QQmlEngine>
#include <QtQuickTest>

/// Gives the test files the module of the interface.
class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() { Views::prepareApplication(); }
    void qmlEngineAvailable(QQmlEngine *engine) {
        Views::prepareEngine(*engine);
        qmlRegisterType<StudioStage>("TolmiTesting", 1, 0, "StudioStage");
    }
};

QUICK_TEST_MAIN_WITH_SETUP(tolmi, Setup)

#include "QuickTests.moc"
