#include "TolmiApp/Updates/UpdateWindow.h"

#include "Support/SettingsStoreFixture.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Updates/UpdateDialogModel.h"
#include "Views/ViewsFixture.h"

#include <QGuiApplication>
#include <QPointer>
#include <QQuickItem>
#include <QQuickView>

#include <optional>
#include <vector>

namespace {

class UpdateWindowTest : public ViewsFixture {
protected:
    UpdateWindowTest() { settings.store.setUiLanguage(AppLanguage::English); }
    void find() {
        AppcastItem item;
        item.displayVersion = QStringLiteral("2.0");
        item.releaseNotes = QStringLiteral("Faster");
        prompt.showFound(item);
    }

    SettingsStoreFixture settings;
    UpdatePrompt prompt;
    int preparedCount = 0;
    UpdateDialogModel model { prompt, settings.store, QStringLiteral("1.0"), [](const FileURL &) {} };
    /// What waits for the moment at which a window may open by itself; absent, that is any moment.
    std::optional<std::vector<std::function<void()>>> waiting;
    UpdateWindow window { model, [this](QQmlEngine &) { ++preparedCount; },
        [this](const std::function<void()> &open) {
            if (waiting)
                waiting->push_back(open);
            else
                open();
        } };
};

} // namespace

TEST_F(UpdateWindowTest, ExistsOnlyWhileThereIsSomethingToShow) {
    EXPECT_EQ(window.view(), nullptr);
    prompt.showChecking();
    ASSERT_NE(window.view(), nullptr);
    EXPECT_TRUE(window.view()->isVisible());
    EXPECT_EQ(preparedCount, 1);
    const QPointer<QQuickView> view = window.view();
    prompt.showUpToDate();
    EXPECT_EQ(window.view(), view);
    prompt.dismiss();
    EXPECT_EQ(window.view(), nullptr);
    EXPECT_FALSE(view->isVisible());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(view, nullptr);
    find();
    ASSERT_NE(window.view(), nullptr);
    EXPECT_TRUE(window.view()->isVisible());
}

TEST_F(UpdateWindowTest, OpensByItselfWhenItMay) {
    waiting.emplace();
    find();
    EXPECT_EQ(window.view(), nullptr);
    ASSERT_EQ(waiting->size(), 1U);
    waiting->front()();
    ASSERT_NE(window.view(), nullptr);
    EXPECT_TRUE(window.view()->isVisible());
}

TEST_F(UpdateWindowTest, OpensAtOnceForThoseWhoAsk) {
    waiting.emplace();
    find();
    prompt.dismiss();
    prompt.showChecking();
    EXPECT_NE(window.view(), nullptr);
    prompt.dismiss();
    waiting->front()();
    EXPECT_EQ(window.view(), nullptr) << "nothing is there to show any more";
}

TEST_F(UpdateWindowTest, IsAsLargeAsWhatItShows) {
    prompt.showChecking();
    const QSize small = window.view()->size();
    find();
    QCoreApplication::processEvents();
    EXPECT_GT(window.view()->height(), small.height());
    EXPECT_EQ(window.view()->height(), qRound(window.view()->rootObject()->implicitHeight()));
    EXPECT_EQ(window.view()->minimumSize(), window.view()->maximumSize());
}

TEST_F(UpdateWindowTest, TakesTheFocusOnlyWhenUserInitiated) {
    const auto isSilent = [this] { return window.view()->property("_q_showWithoutActivating").toBool(); };
    find();
    EXPECT_TRUE(isSilent());
    prompt.dismiss();
    prompt.showChecking();
    EXPECT_FALSE(isSilent());
}

TEST_F(UpdateWindowTest, ACheckThatIsAskedForBringsItToTheFront) {
    const auto isInFront = [this] { return QGuiApplication::focusWindow() == window.view(); };
    find();
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(untilTrue([&] { return QGuiApplication::focusWindow() == &other; }));
    prompt.showUpToDate();
    QCoreApplication::processEvents();
    EXPECT_FALSE(isInFront());
    prompt.showChecking();
    EXPECT_TRUE(untilTrue(isInFront));
}

TEST_F(UpdateWindowTest, ClosingItIsAnAnswer) {
    int dismissedCount = 0;
    QObject::connect(&prompt, &UpdatePrompt::dismissed, [&] { ++dismissedCount; });
    prompt.showChecking();
    window.view()->close();
    EXPECT_EQ(dismissedCount, 1);
    EXPECT_EQ(window.view(), nullptr);
}

TEST_F(UpdateWindowTest, TitleFollowsTheLanguage) {
    prompt.showChecking();
    EXPECT_EQ(window.view()->title(), QStringLiteral("Software Update"));
    settings.store.setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(window.view()->title(), QStringLiteral("Actualizare software"));
}
