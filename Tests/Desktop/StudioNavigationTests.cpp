// Which button of the real program's Studio leads to which workspace, and back into the wizard.

#include "Desktop/OpenStudio.h"
#include "Support/UntilTrue.h"

namespace {

class StudioNavigation : public OpenStudio {
protected:
    void leaveTheWizard() {
        click(buttonIn(control("dialog", wizard), "Skip for now"));
        ASSERT_TRUE(untilTrue([this] { return !isShown("dialog", wizard); }));
    }

    const QString wizard = QStringLiteral("Welcome to Tolmi");
};

} // namespace

TEST_F(StudioNavigation, TheCommandCenterLeadsToEveryWorkspaceItNames) {
    open();
    const struct {
        const char *button;
        const char *heading;
    } ways[] {
        { "Open Dictation Live", "Dictation Live" },
        { "Open History", "History" },
        { "Open Templates", "Templates" },
        { "Run Health Checks", "Health" },
        { "User", "Identity" },
    };
    for (const auto &[button, heading] : ways) {
        goTo("1", "Command Center");
        clickButton(button);
        ASSERT_TRUE(untilTrue([&] { return isShown("heading", heading); })) << heading;
    }
}

TEST_F(StudioNavigation, TheSettingsLeadToTheProfile) {
    open();
    goTo("7", "Hotkey");
    clickButton("Open Profile");
    EXPECT_TRUE(untilTrue([this] { return isShown("heading", "Identity"); }));
}

TEST_F(StudioNavigation, AnInterruptedWizardIsResumedWhereverThisIsOffered) {
    open({ { "tolmi.onboarding.completed", false } });
    leaveTheWizard();
    goTo("1", "Command Center");
    clickButton("Continue onboarding");
    leaveTheWizard();
    goTo("2", "Identity");
    clickButton("Resume onboarding");
    leaveTheWizard();
}
