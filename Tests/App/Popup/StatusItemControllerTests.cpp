#include "TolmiApp/Popup/StatusItemController.h"

#include "App/Dictation/DictationFlowFixture.h"
#include "Support/FakeStatusItem.h"

class StatusItemControllerTest : public DictationFlowFixture {
protected:
    void show() {
        settings->setUiLanguage(AppLanguage::English);
        createSetUp();
        controller.emplace(item, manager,
            StatusItemController::Actions { .togglePopup = [this] { done.append(QStringLiteral("popup")); },
                .openStudio = [this] { done.append(QStringLiteral("studio")); },
                .openSettings = [this] { done.append(QStringLiteral("settings")); },
                .checkForUpdates = [this] { done.append(QStringLiteral("updates")); },
                .quit = [this] { done.append(QStringLiteral("quit")); } });
    }

    QStringList titles() const {
        QStringList all;
        for (const StatusMenuEntry &entry : item.menu)
            all.append(entry.title);
        return all;
    }

    // The fixture's end wants nobody to hold the flow.
    void TearDown() override { controller.reset(); }

    FakeStatusItem item;
    QStringList done;
    std::optional<StatusItemController> controller;
};

TEST_F(StatusItemControllerTest, TellsTheState) {
    show();
    EXPECT_EQ(item.toolTip, QStringLiteral("Tolmi Flow: Ready"));
    record();
    EXPECT_EQ(item.toolTip, QStringLiteral("Tolmi Flow: Recording"));
    EXPECT_EQ(item.menu.front().title, QStringLiteral("Recording"));
    EXPECT_FALSE(item.menu.front().action);
}

TEST_F(StatusItemControllerTest, LeadsEverywhere) {
    show();
    EXPECT_EQ(titles(),
        (QStringList { QStringLiteral("Ready"), QStringLiteral("Tolmi Flow"), QStringLiteral("Open Studio"),
            QStringLiteral("Settings..."), QStringLiteral("Check for Updates..."),
            QStringLiteral("Quit Tolmi") }));
    for (const size_t line : { 1, 2, 3, 5 })
        item.menu[line].action();
    EXPECT_EQ(done,
        (QStringList { QStringLiteral("popup"), QStringLiteral("studio"), QStringLiteral("settings"),
            QStringLiteral("quit") }));
}

TEST_F(StatusItemControllerTest, LooksForUpdatesOnlyWhileThatIsPossible) {
    show();
    EXPECT_FALSE(item.menu[4].action);
    controller->setCanCheckForUpdates(true);
    ASSERT_TRUE(item.menu[4].action);
    item.menu[4].action();
    EXPECT_EQ(done, QStringList { QStringLiteral("updates") });
    controller->setCanCheckForUpdates(false);
    EXPECT_FALSE(item.menu[4].action);
}

TEST_F(StatusItemControllerTest, FollowsTheLanguage) {
    show();
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(item.toolTip, QStringLiteral("Tolmi Flow: Gata"));
    EXPECT_EQ(item.menu.back().title, QStringLiteral("Inchide Tolmi"));
}

TEST_F(StatusItemControllerTest, ShowsAnErrorAsAMessage) {
    show();
    reach(Kind::Error);
    const QString message = manager->state().message();
    EXPECT_EQ(item.messages, QStringList { QStringLiteral("Tolmi Flow: ") + message });
    EXPECT_EQ(item.menu.front().title, message);
    clock.advance(3);
    EXPECT_EQ(item.menu.front().title, QStringLiteral("Ready"));
    EXPECT_EQ(item.messages.size(), 1);
}

TEST_F(StatusItemControllerTest, PressTogglesThePopup) {
    show();
    item.activate();
    EXPECT_EQ(done, QStringList { QStringLiteral("popup") });
}
