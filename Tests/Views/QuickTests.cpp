#include "TolmiApp/Views.h"
#include "Views/HistoryFixture.h"

#include <QQmlEngine>
#include <QtQuickTest>

/// Gives the test files the module of the interface, and their fixtures.
class Setup : public QObject {
    Q_OBJECT

public Q_SLOTS:
    void applicationAvailable() { Views::prepareApplication(); }
    void qmlEngineAvailable(QQmlEngine *engine) {
        Views::prepareEngine(*engine);
        qmlRegisterType<HistoryFixture>("TolmiTesting", 1, 0, "HistoryFixture");
    }
};

QUICK_TEST_MAIN_WITH_SETUP(tolmi, Setup)

#include "QuickTests.moc"
