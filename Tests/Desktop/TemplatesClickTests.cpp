// The templates of the real program, from the choice of an entry to the clipboard.

#include "Desktop/OpenStudio.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Templates/TemplatePreset.h"

namespace {
class TemplatesClicks : public OpenStudio { };
} // namespace

TEST_F(TemplatesClicks, ShapedTextIsCopied) {
    open();
    const HistoryEntry &entry = history()[1];
    choose(entry);
    goTo("5", "Templates");
    EXPECT_EQ(control("text", "Selected Transcript").text(), entry.refinedText);
    click(control("combo box", "Preset"));
    click(control("list item", "Action Items"));
    ASSERT_TRUE(untilTrue([this] { return !isShown("list item", "Action Items"); }));
    clickButton("Apply Template");
    const QString shaped = transform(TemplatePreset::ActionItems, entry.refinedText, AppLanguage::English);
    EXPECT_EQ(control("text", "Preview").text(), shaped);
    clickButton("Copy Output");
    EXPECT_TRUE(untilTrue([&shaped] { return clipboard("UTF8_STRING") == shaped.toUtf8(); }))
        << clipboard("UTF8_STRING").toStdString();
}

TEST_F(TemplatesClicks, ScreenReaderAppliesATemplate) {
    open();
    const HistoryEntry &entry = history()[1];
    choose(entry);
    goTo("5", "Templates");
    EXPECT_TRUE(control("push button", "Apply Template").act("Press"));
    EXPECT_EQ(control("text", "Preview").text(),
        transform(TemplatePreset::EmailClear, entry.refinedText, AppLanguage::English));
}
