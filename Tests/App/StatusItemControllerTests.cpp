#include "TolmiApp/StatusItemController.h"

#include "App/DictationFlowFixture.h"
#include "Support/FakeStatusItem.h"

class StatusItemControllerTest : public DictationFlowFixture {
protected:
    void show() {
        settings->setUiLanguage(AppLanguage::English);
        createSetUp();
        controller.emplace(item, manager,
            StatusItemController::Actions { .openStudio = [this] { done.append(QStringLiteral("studio")); },
                .openSettings = [this] { done.append(QStringLiteral("settings")); },
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

TEST_F(StatusItemControllerTest, tellsTheState) {
    show();
    EXPECT_EQ(item.toolTip, QStringLiteral("Tolmi Flow: Ready"));
    record();
    EXPECT_EQ(item.toolTip, QStringLiteral("Tolmi Flow: Recording"));
    EXPECT_EQ(item.menu.front().title, QStringLiteral("Recording"));
    EXPECT_FALSE(item.menu.front().action);
}

TEST_F(StatusItemControllerTest, leadsEverywhere) {
    show();
    EXPECT_EQ(titles(),
        (QStringList { QStringLiteral("Ready"), QStringLiteral("Open Studio"), QStringLiteral("Settings..."),
            QStringLiteral("Check for Updates..."), QStringLiteral("Quit Tolmi") }));
    for (const size_t line : { 1, 2, 4 })
        item.menu[line].action();
    EXPECT_EQ(
        done, (QStringList { QStringLiteral("studio"), QStringLiteral("settings"), QStringLiteral("quit") }));
}

TEST_F(StatusItemControllerTest, cannotDoWhatItWasNotGiven) {
    show();
    EXPECT_FALSE(item.menu[3].action);
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
