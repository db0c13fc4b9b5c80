#include "TolmiApp/Studio/QuickStudioWindow.h"

#include "Support/FakeDesktopLook.h"
#include "Support/FakeFlowCollaborators.h"
#include "Support/SettingsStoreFixture.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Studio/TolmiStudioWindowModel.h"
#include "Views/ViewsFixture.h"

#include <QPointer>
#include <QQuickItem>
#include <QQuickView>

namespace {

class StudioWindowTest : public ViewsFixture {
protected:
    SettingsStoreFixture settings;
    FlowJournal journal;
    FakeApplication application { journal };
    StudioRouter router { application };
    TolmiStudioWindowModel model { settings.store, router, {} };
    FakeDesktopLook look;
    QuickStudioWindow window { model, settings.store, look };
};

} // namespace

TEST_F(StudioWindowTest, LoadsNothingBeforeItIsShown) {
    EXPECT_EQ(window.view(), nullptr);
    EXPECT_FALSE(model.isShowingOnboarding());
}

TEST_F(StudioWindowTest, OpensInItsSizeUnderItsTitle) {
    window.show();
    ASSERT_TRUE(window.view());
    EXPECT_TRUE(window.view()->isVisible());
    EXPECT_EQ(window.view()->title(), QStringLiteral("Tolmi Studio"));
    EXPECT_EQ(window.view()->size(), QSize(1100, 700));
    EXPECT_EQ(window.view()->rootObject()->size(), QSizeF(1100, 700));
}

TEST_F(StudioWindowTest, TheWorkspaceAndTheWizardOfANewUserComeAfterTheFirstFrame) {
    window.show();
    const auto workspace
        = [this] { return window.view()->rootObject()->property("workspace").value<QObject *>(); };
    EXPECT_EQ(workspace(), nullptr);
    EXPECT_FALSE(model.isShowingOnboarding());
    ASSERT_TRUE(untilTrue([this] { return model.isShowingOnboarding(); }));
    ASSERT_TRUE(workspace());
    EXPECT_EQ(workspace()->property("name"), QStringLiteral("commandCenter"));
}

TEST_F(StudioWindowTest, StaysLoadedWhenItIsClosed) {
    window.show();
    const QQuickItem *const root = window.view()->rootObject();
    router.setDestination(StudioDestination::Templates);
    window.view()->close();
    EXPECT_FALSE(window.view()->isVisible());
    window.show();
    EXPECT_TRUE(window.view()->isVisible());
    EXPECT_EQ(window.view()->rootObject(), root);
    EXPECT_EQ(model.selection(), QStringLiteral("templates"));
}

TEST_F(StudioWindowTest, AClosedOneHasNoWorkspace) {
    const auto workspace
        = [this] { return window.view()->rootObject()->property("workspace").value<QObject *>(); };
    window.show();
    ASSERT_TRUE(untilTrue([&] { return workspace() != nullptr; }));
    const QPointer<QObject> first = workspace();
    // The previous one is still fading out when the window closes.
    router.setDestination(StudioDestination::Templates);
    const QPointer<QObject> second = workspace();
    ASSERT_TRUE(first && second && first != second);
    window.view()->close();
    EXPECT_TRUE(untilTrue([&] { return !first && !second; }));
    EXPECT_EQ(workspace(), nullptr);
    router.setDestination(StudioDestination::Health);
    EXPECT_EQ(workspace(), nullptr);
    window.show();
    ASSERT_TRUE(untilTrue([&] { return workspace() != nullptr; }));
    EXPECT_EQ(workspace()->property("name"), QStringLiteral("health"));
}

TEST_F(StudioWindowTest, GrowsForTheHistoryAndStaysLarge) {
    window.show();
    EXPECT_EQ(window.view()->minimumSize(), QSize(920, 600));
    router.setDestination(StudioDestination::History);
    EXPECT_EQ(window.view()->size(), QSize(1140, 700));
    EXPECT_EQ(window.view()->minimumSize(), QSize(1140, 620));
    router.setDestination(StudioDestination::Health);
    EXPECT_EQ(window.view()->size(), QSize(1140, 700));
    EXPECT_EQ(window.view()->minimumSize(), QSize(920, 600));
}

TEST_F(StudioWindowTest, OpensLargeEnoughForTheHistory) {
    router.setDestination(StudioDestination::History);
    window.show();
    EXPECT_EQ(window.view()->size(), QSize(1140, 700));
}

TEST_F(StudioWindowTest, GoesToTheWorkspaceThatIsChosenBeforeTheFirstFrame) {
    window.show();
    router.setDestination(StudioDestination::Templates);
    ASSERT_TRUE(untilTrue([this] { return model.isShowingOnboarding(); }));
    const auto *workspace = window.view()->rootObject()->property("workspace").value<QObject *>();
    ASSERT_TRUE(workspace);
    EXPECT_EQ(workspace->property("name"), QStringLiteral("templates"));
}

TEST_F(StudioWindowTest, AMaximisedOneComesBackMaximised) {
    window.show();
    window.view()->showMaximized();
    window.view()->close();
    window.show();
    EXPECT_EQ(window.view()->windowState(), Qt::WindowMaximized);
}

TEST_F(StudioWindowTest, ShowingItAgainLeavesItAsItIs) {
    window.show();
    window.view()->resize(1300, 900);
    window.show();
    EXPECT_EQ(window.view()->size(), QSize(1300, 900));
}
