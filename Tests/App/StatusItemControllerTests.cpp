#include "TolmiApp/StatusItemController.h"

#include "App/DictationFlowFixture.h"
#include "Support/FakeStatusItem.h"

class StatusItemControllerTest : public DictationFlowFixture {
protected:
    void show() {
        settings->setUiLanguage(AppLanguage::English);
        createSetUp();
        controller.emplace(item, manager, [this] { ++quits; });
    }

    // The fixture's end wants nobody to hold the flow.
    void TearDown() override { controller.reset(); }

    FakeStatusItem item;
    int quits = 0;
    std::optional<StatusItemController> controller;
};

TEST_F(StatusItemControllerTest, tellsTheState) {
    show();
    EXPECT_EQ(item.toolTip, QStringLiteral("Tolmi Flow: Ready"));
    record();
    EXPECT_EQ(item.toolTip, QStringLiteral("Tolmi Flow: Recording"));
    EXPECT_EQ(item.menu.front().title, QStringLiteral("Recording"));
    EXPECT_FALSE(item.menu.front().action);
}

TEST_F(StatusItemControllerTest, quits) {
    show();
    EXPECT_EQ(item.menu.back().title, QStringLiteral("Quit Tolmi"));
    item.menu.back().action();
    EXPECT_EQ(quits, 1);
}

TEST_F(StatusItemControllerTest, followsTheLanguage) {
    show();
    settings->setUiLanguage(AppLanguage::Romanian);
    EXPECT_EQ(item.toolTip, QStringLiteral("Tolmi Flow: Gata"));
    EXPECT_EQ(item.menu.back().title, QStringLiteral("Inchide Tolmi"));
}

TEST_F(StatusItemControllerTest, showsAnErrorAsAMessage) {
    show();
    reach(Kind::Error);
    const QString message = manager->state().message();
    EXPECT_EQ(item.messages, QStringList { QStringLiteral("Tolmi Flow: ") + message });
    EXPECT_EQ(item.menu.front().title, message);
    clock.advance(3);
    EXPECT_EQ(item.menu.front().title, QStringLiteral("Ready"));
    EXPECT_EQ(item.messages.size(), 1);
}

TEST_F(StatusItemControllerTest, pressAndMenuToggleThePopup) {
    int toggles = 0;
    show();
    controller->setPopup([&toggles] { ++toggles; });
    item.activate();
    EXPECT_EQ(toggles, 1);
    ASSERT_EQ(item.menu.size(), 3U);
    EXPECT_EQ(item.menu[1].title, QStringLiteral("Tolmi Flow"));
    item.menu[1].action();
    EXPECT_EQ(toggles, 2);
    record();
    EXPECT_EQ(item.menu.size(), 3U);
}

TEST_F(StatusItemControllerTest, announcesALaterStart) {
    show();
    controller->announce();
    EXPECT_EQ(item.messages, QStringList { QStringLiteral("Tolmi Flow: Ready") });
}
