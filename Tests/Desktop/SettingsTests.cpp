// Changes in the settings of the real program, made with the mouse: what is stored, and what is seen of them.

#include "Desktop/ProgramInUse.h"

#include "dictate/Home.h"

#include "Support/Print.h"

using State = AccessibleElement::State;

namespace {
class Settings : public ProgramInUse {
protected:
    void SetUp() override {
        ASSERT_TRUE(prepareHome({}));
        start();
        click("list item", "Settings");
    }

    void choose(const QString &picker, const QString &option) {
        click("combo box", picker);
        click("list item", option);
    }
};
} // namespace

TEST_F(Settings, LanguageChangesTheWholeWindowAndIsStored) {
    choose("UI language", "Romanian");
    control("list item", "Centru comenzi");
    control("page tab", "Rafinare");
    EXPECT_TRUE(isThere("combo box", "Limba interfata"));
    EXPECT_TRUE(comesToBeStored("tolmi.uiLanguage", "ro"));

    ASSERT_TRUE(m_program.quit());
    start();
    control("list item", "Istoric");
}

TEST_F(Settings, PathThatLeadsNowhereIsStoredAndFoundByTheHealthChecks) {
    click("page tab", "Engine");
    click("text", "Model path");
    ASSERT_TRUE(fill(control("text", "Model path"), "/nowhere/model.bin"));
    EXPECT_TRUE(comesToBeStored("tolmi.modelPath", "/nowhere/model.bin"));
    click("list item", "Health");
    control("list item", "Whisper model: Model file missing");
}

TEST_F(Settings, RefinementIsSwitchedOffAndIsStored) {
    click("page tab", "Refinement");
    const AccessibleElement refinement = control("check box", "Enable text refinement");
    ASSERT_TRUE(refinement.is(State::Checked));
    m_user.click(refinement.rectangle().center());
    EXPECT_TRUE(waitUntil([&] { return !refinement.now().is(State::Checked); }, patience));
    EXPECT_TRUE(comesToBeStored("tolmi.refinementEnabled", false));
}
