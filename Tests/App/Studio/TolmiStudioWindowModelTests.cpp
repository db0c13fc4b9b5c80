#include "TolmiApp/Studio/TolmiStudioWindowModel.h"

#include "Support/FakeFlowCollaborators.h"
#include "Support/Print.h"
#include "Support/SettingsStoreFixture.h"

#include <QCoreApplication>
#include <QPointer>

#include <gtest/gtest.h>

namespace {

class TolmiStudioWindowModelTest : public testing::Test {
protected:
    static StudioModelFactory naming(const QString &name) {
        return [name](TolmiStudioWindowModel &) {
            auto made = std::make_unique<QObject>();
            made->setObjectName(name);
            return made;
        };
    }

    static void deleteLeftovers() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

    SettingsStoreFixture settings;
    FlowJournal journal;
    FakeApplication application { journal };
    StudioRouter router { application };
    int quits = 0;
    TolmiStudioWindowModel model { settings.store, router,
        { .workspaces = { { StudioDestination::History, naming(QStringLiteral("the history")) } },
            .quit = [this] { ++quits; } } };
};

} // namespace

TEST_F(TolmiStudioWindowModelTest, TellsTheDestinationsInTheirOrder) {
    struct Row {
        const char *name;
        const char *titleKey;
        const char *symbol;
    };
    constexpr Row table[] {
        { "commandCenter", "routeCommandCenter", "command.circle" },
        { "profile", "routeProfile", "person.crop.circle" },
        { "dictationLive", "routeDictationLive", "waveform.circle" },
        { "history", "routeHistory", "clock.arrow.circlepath" },
        { "templates", "routeTemplates", "wand.and.stars" },
        { "health", "routeHealth", "stethoscope" },
        { "settings", "routeSettings", "gearshape" },
    };
    const QVariantList destinations = TolmiStudioWindowModel::destinations();
    ASSERT_EQ(destinations.size(), qsizetype(std::size(table)));
    qsizetype index = 0;
    for (const Row &row : table) {
        const QVariantMap told = destinations[index++].toMap();
        EXPECT_EQ(told[QStringLiteral("name")].toString(), QLatin1String(row.name));
        EXPECT_EQ(told[QStringLiteral("titleKey")].toString(), QLatin1String(row.titleKey));
        EXPECT_EQ(told[QStringLiteral("symbol")].toString(), QLatin1String(row.symbol));
    }
}

TEST_F(TolmiStudioWindowModelTest, TheSelectionIsTheRouters) {
    int changes = 0;
    QObject::connect(&model, &TolmiStudioWindowModel::selectionChanged, &model, [&changes] { ++changes; });
    EXPECT_EQ(model.selection(), QStringLiteral("commandCenter"));
    router.setDestination(StudioDestination::Templates);
    EXPECT_EQ(model.destinationSelection(), StudioDestination::Templates);
    EXPECT_EQ(model.selection(), QStringLiteral("templates"));
    model.setSelection(QStringLiteral("health"));
    EXPECT_EQ(router.destination(), StudioDestination::Health);
    EXPECT_EQ(changes, 2);
}

TEST_F(TolmiStudioWindowModelTest, ThereIsAlwaysASelection) {
    model.setDestinationSelection(StudioDestination::Settings);
    model.setDestinationSelection({});
    model.setSelection(QString());
    model.setSelection(QStringLiteral("nowhere"));
    EXPECT_EQ(router.destination(), StudioDestination::Settings);
}

TEST_F(TolmiStudioWindowModelTest, TheDestinationOutlivesTheWindow) {
    model.setSelection(QStringLiteral("profile"));
    const TolmiStudioWindowModel later(settings.store, router, {});
    EXPECT_EQ(later.selection(), QStringLiteral("profile"));
}

TEST_F(TolmiStudioWindowModelTest, TheWizardOfANewUserOpensOnce) {
    ASSERT_TRUE(settings.store.shouldShowOnboardingReminder());
    EXPECT_FALSE(model.isShowingOnboarding());
    model.appear();
    EXPECT_TRUE(model.isShowingOnboarding());
    model.setIsShowingOnboarding(false);
    model.appear();
    EXPECT_FALSE(model.isShowingOnboarding());
}

TEST_F(TolmiStudioWindowModelTest, TheWizardOfOldUsersOpensWhenTheyAskForIt) {
    settings.store.setHasCompletedOnboarding(true);
    model.appear();
    EXPECT_FALSE(model.isShowingOnboarding());
    settings.store.setHasCompletedOnboarding(false);
    model.appear();
    EXPECT_FALSE(model.isShowingOnboarding()) << "it was decided when the window appeared first";
    model.setIsShowingOnboarding(true);
    EXPECT_TRUE(model.isShowingOnboarding());
}

TEST_F(TolmiStudioWindowModelTest, MakesAModelEachTime) {
    QObject first;
    QObject second;
    const QObject *const made = model.makeWorkspaceModel(QStringLiteral("history"), &first);
    ASSERT_TRUE(made);
    EXPECT_EQ(made->objectName(), QStringLiteral("the history"));
    EXPECT_NE(model.makeWorkspaceModel(QStringLiteral("history"), &second), made);
}

TEST_F(TolmiStudioWindowModelTest, AModelGoesAfterItsOwner) {
    auto owner = std::make_unique<QObject>();
    const QPointer<QObject> made = model.makeWorkspaceModel(QStringLiteral("history"), owner.get());
    owner.reset();
    EXPECT_TRUE(made);
    deleteLeftovers();
    EXPECT_FALSE(made);
}

TEST_F(TolmiStudioWindowModelTest, ThereIsNoModelWithoutAFactory) {
    QObject owner;
    EXPECT_EQ(model.makeWorkspaceModel(QStringLiteral("health"), &owner), nullptr);
    EXPECT_EQ(model.makeWorkspaceModel(QStringLiteral("nowhere"), &owner), nullptr);
    EXPECT_FALSE(model.hasOnboarding());
    EXPECT_EQ(model.makeOnboardingModel(&owner), nullptr);
}

TEST_F(TolmiStudioWindowModelTest, FactoriesReachTheWindow) {
    TolmiStudioWindowModel window(settings.store, router, { .onboarding = [](TolmiStudioWindowModel &studio) {
        studio.router().setDestination(StudioDestination::History);
        studio.setIsShowingOnboarding(true);
        return std::make_unique<QObject>();
    } });
    QObject owner;
    EXPECT_TRUE(window.makeOnboardingModel(&owner));
    EXPECT_TRUE(window.isShowingOnboarding());
    EXPECT_EQ(router.destination(), StudioDestination::History);
}

TEST_F(TolmiStudioWindowModelTest, ANoticeStaysUntilItIsRead) {
    model.tell(QStringLiteral("Export failed"), QStringLiteral("No space left on device"));
    EXPECT_TRUE(model.showingNotice());
    EXPECT_EQ(model.noticeTitle(), QStringLiteral("Export failed"));
    EXPECT_EQ(model.noticeMessage(), QStringLiteral("No space left on device"));
    model.appear();
    EXPECT_TRUE(model.showingNotice());
    model.dismissNotice();
    EXPECT_FALSE(model.showingNotice());
}

TEST_F(TolmiStudioWindowModelTest, OffersToQuitWhereNothingElseDoes) {
    bool hasTray = true;
    TolmiStudioWindowModel window(
        settings.store, router, { .hasStatusItem = [&hasTray] { return hasTray; } });
    window.appear();
    EXPECT_FALSE(window.offersToQuit());
    hasTray = false;
    window.appear();
    EXPECT_TRUE(window.offersToQuit());
    hasTray = true;
    window.appear();
    EXPECT_FALSE(window.offersToQuit());
}

TEST_F(TolmiStudioWindowModelTest, Quits) {
    model.quit();
    EXPECT_EQ(quits, 1);
}
