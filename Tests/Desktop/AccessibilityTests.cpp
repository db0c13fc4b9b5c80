// What the windows of the real program give to those who use the keyboard alone, or a screen reader.

#include "Desktop/ProgramInUse.h"

#include "desktop-driver/KeyboardWalk.h"
#include "dictate/Home.h"

#include "Support/Print.h"

namespace {

struct Workspace {
    const char *key;
    const char *name;
};

void PrintTo(const Workspace &workspace, std::ostream *out) {
    *out << workspace.name;
}

class Accessibility : public ProgramInUse {
protected:
    void open(const HomeOptions &home) {
        ASSERT_TRUE(prepareHome(home));
        start();
    }
};

class AccessibilityOfWorkspace : public Accessibility, public testing::WithParamInterface<Workspace> { };

} // namespace

TEST_P(AccessibilityOfWorkspace, KeyboardReachesEveryControlAndEachHasAName) {
    open({});
    m_user.typeWithControl(GetParam().key);
    control(QStringLiteral("panel"), GetParam().name);
    EXPECT_EQ(keyboardComplaints(m_user, front()), QStringList()) << front().described().toStdString();
}

TEST_F(Accessibility, KeyboardReachesEveryControlOfTheWizard) {
    const QJsonObject atTheBeginning { { "tolmi.onboarding.completed", false },
        { "tolmi.profileDisplayName", "Ana" } };
    open({ .settings = atTheBeginning });
    enterDialog(QStringLiteral("Welcome to Tolmi"));
    for (const QString step : { "Display name", "Microphone", "Start Recording" }) {
        ASSERT_TRUE(waitUntil([&] { return front().described().contains(step); }, patience));
        EXPECT_EQ(keyboardComplaints(m_user, front()), QStringList()) << front().described().toStdString();
        if (isThere(QStringLiteral("push button"), QStringLiteral("Continue")))
            click(QStringLiteral("push button"), QStringLiteral("Continue"));
    }
}

TEST_F(Accessibility, KeyboardReachesEveryControlOfTheSettings) {
    open({});
    m_user.typeWithControl("7");
    for (const QString tab : { "General", "Engine", "Refinement" }) {
        click(QStringLiteral("page tab"), tab);
        EXPECT_EQ(keyboardComplaints(m_user, front()), QStringList()) << front().described().toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(Studio, AccessibilityOfWorkspace,
    testing::Values(Workspace { "1", "Command Center" }, Workspace { "2", "Profile" },
        Workspace { "3", "Dictation Live" }, Workspace { "4", "History" }, Workspace { "5", "Templates" },
        Workspace { "6", "Health" }, Workspace { "7", "Settings" }));
