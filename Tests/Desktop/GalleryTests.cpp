// What the controls of the interface tell a screen reader, and what mouse and keyboard do with them, in a
// window of the real desktop.

#include "Desktop/TestPrograms.h"

#include "desktop-driver/KeyboardWalk.h"
#include "dictate/VirtualUser.h"
#include "dictate/Waiting.h"

#include "Support/Print.h"

#include <gtest/gtest.h>

using State = AccessibleElement::State;

namespace {

constexpr double patience = 20;

class Gallery : public testing::Test {
protected:
    /// The control with this role and name, which the window must have.
    AccessibleElement control(const QString &role, const QString &name) {
        auto found = program.find(role, name);
        if (!found)
            throw std::runtime_error(
                (role + u' ' + name + QStringLiteral(" is not among\n") + program.described()).toStdString());
        return *found;
    }

    void click(const AccessibleElement &element) { user.click(element.rectangle().center()); }

    static bool becomes(const AccessibleElement &element, State state, bool value = true) {
        return waitUntil([&] { return element.now().is(state) == value; }, patience);
    }

    void openPage(const QString &name) { click(control(QStringLiteral("list item"), name)); }

    VirtualUser user;
    TestProgram window { QStringLiteral(TOLMI_GALLERY), {}, QStringLiteral("tolmi-gallery") };
    AccessibleProgram program { window.processID() };
};

} // namespace

TEST_F(Gallery, SwitchIsFoundByItsNameAndTurnedByTheMouse) {
    const AccessibleElement dark = control("check box", "Dark");
    EXPECT_TRUE(dark.is(State::Checked));
    click(dark);
    EXPECT_TRUE(becomes(dark, State::Checked, false));
    click(dark);
    EXPECT_TRUE(becomes(dark, State::Checked));
}

TEST_F(Gallery, SwitchTurnedByAScreenReaderTellsTheProgram) {
    EXPECT_TRUE(control("check box", "Rom\u00e2n\u0103").act("Toggle"));
    control("label", "Controale");
}

TEST_F(Gallery, FieldTellsWhatIsTypedIntoIt) {
    const AccessibleElement field = control("text", "Your name");
    click(field);
    ASSERT_TRUE(becomes(field, State::Focused));
    user.enter("Ana-Maria 27");
    EXPECT_TRUE(waitUntil([&] { return field.text() == "Ana-Maria 27"; }, patience))
        << field.text().toStdString();
}

TEST_F(Gallery, PickerTellsItsOptionsAndTheChosenOne) {
    const AccessibleElement picker = control("combo box", "Language");
    click(picker);
    const AccessibleElement option = control("list item", "Romanian");
    EXPECT_TRUE(control("list item", "English").is(State::Selected));
    EXPECT_FALSE(option.is(State::Selected));
    click(option);
    EXPECT_TRUE(waitUntil([&] { return !program.find("list item", "Romanian", 0); }, patience));
}

TEST_F(Gallery, SliderTellsItsValue) {
    openPage("settings");
    const AccessibleElement slider = control("slider", "Processing volume");
    EXPECT_EQ(slider.value(), std::optional(0.35));
    click(slider);
    EXPECT_TRUE(waitUntil([&] { return slider.value() == std::optional(0.5); }, patience));
}

TEST_F(Gallery, TabIsChosenByAScreenReader) {
    const AccessibleElement general = control("page tab", "General");
    EXPECT_FALSE(general.is(State::Selected));
    EXPECT_TRUE(general.act("Press")) << general.actions().join(", ").toStdString();
    EXPECT_TRUE(becomes(general, State::Selected));
    EXPECT_FALSE(control("page tab", "Engine").is(State::Selected));
}

TEST_F(Gallery, SliderMovedByAScreenReaderTellsTheProgram) {
    openPage("settings");
    control("label", "35%");
    EXPECT_TRUE(control("slider", "Processing volume").act("Increase"));
    control("label", "40%");
}

TEST_F(Gallery, DialogTellsWhatItOffers) {
    click(control("push button", "Clear everything"));
    const AccessibleElement keep = control("push button", "Keep");
    EXPECT_TRUE(becomes(keep, State::Focused)) << "the answer that changes nothing has the keyboard";
    click(control("push button", "Clear"));
    EXPECT_TRUE(waitUntil([&] { return !program.find("push button", "Keep", 0); }, patience));
}

TEST_F(Gallery, KeyboardReachesEveryControlAndEachHasAName) {
    for (const QString page : { "controls", "stage", "settings" }) {
        openPage(page);
        EXPECT_EQ(keyboardComplaints(user, program), QStringList()) << page.toStdString();
    }
}
