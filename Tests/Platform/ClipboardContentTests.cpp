#include "Platform/Linux/Clipboard/ClipboardContent.h"

#include "Support/Print.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

const QString html = QStringLiteral("text/html");
const QString hint = QStringLiteral("x-kde-passwordManagerHint");
const QString copyqHidden = QStringLiteral("application/x-copyq-hidden");

std::vector<QString> types(std::initializer_list<const char *> names) {
    std::vector<QString> result;
    for (const char *name : names)
        result.push_back(QString::fromLatin1(name));
    return result;
}

TEST(ClipboardContentTests, OffersTextUnderEveryNameThatProgramsAskWith) {
    for (const char *given : { "text/plain;charset=utf-8", "UTF8_STRING" }) {
        const ClipboardContent content(
            { PasteboardItem { { { QLatin1String(given), "m\xc3\xa2ine \xe2\x82\xac" } } } });
        EXPECT_THAT(content.types(),
            testing::UnorderedElementsAre(
                "text/plain;charset=utf-8", "UTF8_STRING", "text/plain", "TEXT", "STRING"));
        EXPECT_EQ(content.data(QStringLiteral("UTF8_STRING")), "m\xc3\xa2ine \xe2\x82\xac");
        EXPECT_EQ(content.data(QStringLiteral("text/plain")), "m\xc3\xa2ine \xe2\x82\xac");
        EXPECT_EQ(content.data(QStringLiteral("TEXT")), "m\xc3\xa2ine \xe2\x82\xac");
        EXPECT_EQ(content.data(QStringLiteral("STRING")), "m\xe2ine ?");
        EXPECT_EQ(content.items().front().representations.size(), 1);
    }
}

TEST(ClipboardContentTests, KeepsTheTextsThatCameWithIt) {
    const ClipboardContent content({ PasteboardItem {
        { { QStringLiteral("UTF8_STRING"), "one" }, { QStringLiteral("STRING"), "two" } } } });
    EXPECT_EQ(content.data(QStringLiteral("STRING")), "two");
    EXPECT_EQ(content.data(QStringLiteral("UTF8_STRING")), "one");
}

TEST(ClipboardContentTests, OffersNoTextWhereThereIsNone) {
    const ClipboardContent content({ PasteboardItem { { { html, "<b>a</b>" } } } });
    EXPECT_THAT(content.types(), ElementsAre("text/html"));
    EXPECT_EQ(content.data(html), "<b>a</b>");
    EXPECT_FALSE(content.data(QStringLiteral("UTF8_STRING")));
    EXPECT_FALSE(content.data(hint));
}

TEST(ClipboardContentTests, MarksDictatedText) {
    const auto dictated = ClipboardContent::dictated(QStringLiteral("a"));
    EXPECT_THAT(dictated.types(), testing::IsSupersetOf({ hint, copyqHidden }));
    EXPECT_EQ(dictated.data(hint), "secret");
    EXPECT_EQ(dictated.data(copyqHidden), "1");
    EXPECT_TRUE(dictated.isSecret());
}

TEST(ClipboardContentTests, TheMarkIsPartOfTheContent) {
    const auto dictated = ClipboardContent::dictated(QStringLiteral("a"));
    const ClipboardContent again(dictated.items());
    EXPECT_EQ(again.types(), dictated.types());
    EXPECT_TRUE(again.isSecret());
    const ClipboardContent other({ PasteboardItem { { { pasteboardTextType, "a" }, { hint, "no" } } } });
    EXPECT_FALSE(other.isSecret());
    EXPECT_FALSE(ClipboardContent().isSecret());
}

TEST(ClipboardContentTests, KeepsTheMarkOfAnotherProgram) {
    const ClipboardContent content(
        { PasteboardItem { { { pasteboardTextType, "a" }, { hint, "secret" } } } });
    EXPECT_EQ(content.data(hint), "secret");
}

TEST(ClipboardContentTests, TakesEachTypeFromTheFirstItemThatHasIt) {
    const ClipboardContent content({ PasteboardItem { { { html, "first" } } },
        PasteboardItem { { { html, "second" }, { hint, "x" } } } });
    EXPECT_THAT(content.types(), ElementsAre(html, hint));
    EXPECT_EQ(content.data(html), "first");
}

TEST(ClipboardContentTests, NothingIsNoItem) {
    EXPECT_THAT(ClipboardContent().items(), IsEmpty());
    EXPECT_THAT(ClipboardContent().types(), IsEmpty());
}

struct ReadingCase {
    const char *name;
    std::vector<QString> offered;
    std::vector<QString> read;
};

class ClipboardReadingTests : public testing::TestWithParam<ReadingCase> { };

TEST_P(ClipboardReadingTests, ChoosesWhatToRead) {
    EXPECT_EQ(clipboardTypesToRead(GetParam().offered), GetParam().read);
}

INSTANTIATE_TEST_SUITE_P(Table, ClipboardReadingTests,
    testing::Values(ReadingCase { "nothing", {}, {} },
        ReadingCase { "descriptionsAreNoContent",
            types({ "TARGETS", "MULTIPLE", "TIMESTAMP", "SAVE_TARGETS", "DELETE", "PIXMAP", "CLIENT_WINDOW",
                "NAME" }),
            {} },
        ReadingCase { "bestTextFirstAndOldNamesLast",
            types({ "STRING", "TEXT", "COMPOUND_TEXT", "text/html", "UTF8_STRING", "text/plain",
                "application/x-own", "text/plain;charset=utf-8" }),
            types({ "UTF8_STRING", "text/plain;charset=utf-8", "text/html", "application/x-own", "STRING",
                "COMPOUND_TEXT", "text/plain" }) },
        ReadingCase {
            "oldTextWhereThereIsNoOther", types({ "TEXT", "STRING" }), types({ "TEXT", "STRING" }) },
        ReadingCase { "firstLosslessImage",
            types({ "image/jpeg", "image/webp", "image/bmp", "image/png", "image/tiff" }),
            types({ "image/bmp" }) },
        ReadingCase {
            "lossyImageWhereThereIsNoOther", types({ "image/webp", "image/jpeg" }), types({ "image/webp" }) },
        ReadingCase { "imageAfterOtherTypes", types({ "image/png", "text/html", "text/uri-list" }),
            types({ "text/html", "text/uri-list", "image/png" }) },
        ReadingCase { "drawingsAreNoEncodingOfThePicture",
            types({ "image/svg+xml", "image/x-inkscape-svg", "image/png" }),
            types({ "image/svg+xml", "image/x-inkscape-svg", "image/png" }) },
        ReadingCase { "marksOfAnotherProgramFirst",
            types({ "UTF8_STRING", "application/x-copyq-hidden", "x-kde-passwordManagerHint" }),
            types({ "application/x-copyq-hidden", "x-kde-passwordManagerHint", "UTF8_STRING" }) },
        ReadingCase { "eachTypeOnce", types({ "text/html", "text/html" }), types({ "text/html" }) }),
    [](const auto &info) { return info.param.name; });
} // namespace
