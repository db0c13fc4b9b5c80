#include "TolmiApp/OverlayPanel.h"
#include "Views/HistoryFixture.h"
#include "Views/ViewsFixture.h"

#include <QDir>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>

#include <memory>

namespace {

class QmlFiles : public ViewsTest { };

QStringList filesOfModule() {
    return QDir(QStringLiteral(":/qt/qml/Tolmi")).entryList({ QStringLiteral("*.qml") });
}

/// What the pieces of the history workspace need.
QVariantMap requiredByHistory(const QString &file, HistoryFixture &fixture) {
    QVariantMap required { { QStringLiteral("model"), QVariant::fromValue(fixture.model()) },
        { QStringLiteral("texts"), QVariant::fromValue(fixture.texts()) } };
    if (file != QStringLiteral("HistoryRow.qml"))
        return required;
    const HistoryRows &rows = *fixture.model()->rows();
    const auto names = rows.roleNames();
    for (auto role = names.cbegin(); role != names.cend(); ++role)
        required.insert(QString::fromLatin1(role.value()), rows.data(rows.index(0), role.key()));
    required.insert(QStringLiteral("index"), 0);
    return required;
}

} // namespace

TEST_F(QmlFiles, EveryOneIsMadeAndShownWithoutAWarning) {
    const QStringList files = filesOfModule();
    ASSERT_GT(files.size(), 40);
    OverlayViewModel model;
    HistoryFixture history;
    history.openMany(3);
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
        if (file.startsWith(QStringLiteral("History")))
            required = requiredByHistory(file, history);
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
