#include "Support/FakeDesktopLook.h"
#include "Support/FakeFlowCollaborators.h"
#include "Support/FakePasteboard.h"
#include "Support/FlowManagerFixture.h"
#include "Support/ProfileModelFixture.h"
#include "Support/SettingsModelFixture.h"
#include "TolmiApp/Overlay/OverlayPanel.h"
#include "TolmiApp/Popup/MenuBarPopupModel.h"
#include "TolmiApp/Shell/ViewAppearance.h"
#include "TolmiApp/Shell/ViewTexts.h"
#include "TolmiApp/Studio/TolmiStudioWindowModel.h"
#include "TolmiApp/Updates/UpdateDialogModel.h"
#include "Views/CommandCenterFixture.h"
#include "Views/DictationLiveFixture.h"
#include "Views/HealthFixture.h"
#include "Views/HistoryFixture.h"
#include "Views/OnboardingFixture.h"
#include "Views/TemplatesFixture.h"
#include "Views/ViewsFixture.h"

#include <QDir>
#include <QFile>
#include <QQmlComponent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>

#include <map>
#include <memory>

namespace {

const QString module = QStringLiteral(":/qt/qml/Tolmi/");

/// Provides values for the required properties of QML files.
class Requirements {
public:
    /// Provides `model` for required properties of its type.
    void offer(QObject &model) {
        m_models[QString::fromLatin1(model.metaObject()->className())] = QVariant::fromValue(&model);
    }

    /// Provides a value for required properties of that name whose type was not provided.
    void offer(const char *name, const QVariant &value) { m_values[QString::fromLatin1(name)] = value; }

    QVariantMap of(const QString &file) const {
        static const QRegularExpression declaration(
            QStringLiteral("^    required property (\\w+) (\\w+)"), QRegularExpression::MultilineOption);
        QVariantMap required;
        for (const auto &found : declaration.globalMatch(sourceOf(file))) {
            const auto model = m_models.find(found.captured(1));
            required[found.captured(2)]
                = model == m_models.end() ? m_values.value(found.captured(2)) : model->second;
        }
        return required;
    }

private:
    static QString sourceOf(const QString &file) {
        QFile source(module + file);
        EXPECT_TRUE(source.open(QIODevice::ReadOnly));
        return QString::fromUtf8(source.readAll());
    }

    std::map<QString, QVariant> m_models;
    QVariantMap m_values;
};

class QmlFiles : public ViewsFixture {
protected:
    QmlFiles() {
        history.openMany(3);
        offerRow(*history.model()->rows());
        requirements.offer(*history.model());
        requirements.offer(overlay);
        requirements.offer(popup);
        requirements.offer(*popup.profile());
        requirements.offer(studio);
        requirements.offer(updates);
        requirements.offer(*health.model());
        requirements.offer(*templates.model());
        requirements.offer(settings.model);
        requirements.offer(*commandCenter.model());
        requirements.offer(*live.model());
        requirements.offer(*live.model()->dictation());
        requirements.offer(*onboarding.model());
        profile.open();
        requirements.offer(*profile.model);
        requirements.offer("item", QVariant::fromValue(health.model()->items().first()));
        requirements.offer("texts", QVariant::fromValue<QObject *>(&texts));
        requirements.offer("appearance", QVariant::fromValue<QObject *>(appearance));
        requirements.offer("anchorItem", QVariant::fromValue(&anchor));
        requirements.offer("makeModel",
            QVariant::fromValue(engine.evaluate(QStringLiteral("(function() { return null })"))));
        requirements.offer("view", QUrl());
        requirements.offer("name", QStringLiteral("health"));
        requirements.offer("title", QStringLiteral("Health"));
        window.resize(600, 400);
        window.show();
    }

    /// Provides what a list view passes to the delegate of its first row.
    void offerRow(const HistoryRows &rows) {
        const auto names = rows.roleNames();
        for (auto role = names.cbegin(); role != names.cend(); ++role)
            requirements.offer(role.value().constData(), rows.data(rows.index(0), role.key()));
        requirements.offer("index", 0);
    }

    FlowManagerFixture flow;
    FakePasteboard pasteboard;
    FlowJournal journal;
    FakeApplication application { journal };
    StudioRouter router { application };
    const FakeDesktopLook look;
    ViewTexts texts { flow.store, PlatformTexts::forLinux() };
    OverlayViewModel overlay;
    MenuBarPopupModel popup { flow.flow, pasteboard, {} };
    TolmiStudioWindowModel studio { flow.store, router, {} };
    ViewAppearance *const appearance = new ViewAppearance(engine, flow.store, look);
    QQuickWindow window;
    QQuickItem anchor { window.contentItem() };
    UpdatePrompt updatePrompt;
    UpdateDialogModel updates { updatePrompt, flow.store, {}, [](const FileURL &) {} };
    HealthFixture health;
    HistoryFixture history;
    TemplatesFixture templates;
    SettingsModelFixture settings;
    CommandCenterFixture commandCenter;
    DictationLiveFixture live;
    OnboardingFixture onboarding;
    ProfileModelFixture profile;
    Requirements requirements;
};

QStringList filesOfModule() {
    QStringList files = QDir(module).entryList({ QStringLiteral("*.qml") });
    for (const char *singleton : { "Metrics.qml", "Motion.qml", "TolmiPalette.qml", "Typography.qml" })
        files.removeOne(QString::fromLatin1(singleton));
    return files;
}

} // namespace

TEST_F(QmlFiles, AllLoadAndShowWithoutAWarning) {
    const QStringList files = filesOfModule();
    ASSERT_GT(files.size(), 40);
    for (const QString &file : files) {
        SCOPED_TRACE(file.toStdString());
        QQmlComponent component(&engine, QUrl(QStringLiteral("qrc") + module + file));
        ASSERT_TRUE(component.isReady()) << component.errorString().toStdString();
        const std::unique_ptr<QObject> object(component.createWithInitialProperties(requirements.of(file)));
        ASSERT_TRUE(object) << component.errorString().toStdString();
        if (auto *item = qobject_cast<QQuickItem *>(object.get())) {
            item->setParentItem(window.contentItem());
            QCoreApplication::processEvents();
            EXPECT_FALSE(window.grabWindow().isNull());
        }
        const QStringList warnings = takeWarnings();
        EXPECT_TRUE(warnings.isEmpty()) << warnings.join(QLatin1Char('\n')).toStdString();
    }
}
