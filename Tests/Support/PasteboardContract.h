#pragma once

#include "Platform/Pasteboard.h"
#include "Support/Print.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

/// What every clipboard does. `Made` builds one in its constructor and gives it as `pasteboard()`.
template <typename Made>
class PasteboardContract : public testing::Test {
protected:
    Pasteboard &pasteboard() { return m_made.pasteboard(); }

    static std::vector<PasteboardItem> text(const QByteArray &bytes) {
        return { PasteboardItem { { { pasteboardTextType, bytes } } } };
    }
    /// The text alone of a dictated text that is on the clipboard with its marks.
    std::vector<PasteboardItem> dictatedText() {
        std::vector<PasteboardItem> items = pasteboard().items();
        EXPECT_EQ(items.size(), 1);
        EXPECT_GT(items.front().representations.size(), 1);
        items.front().representations.resize(1);
        return items;
    }

private:
    Made m_made;
};

TYPED_TEST_SUITE_P(PasteboardContract);

TYPED_TEST_P(PasteboardContract, StartsEmpty) {
    EXPECT_THAT(this->pasteboard().items(), testing::IsEmpty());
}

TYPED_TEST_P(PasteboardContract, GivesADictatedTextBack) {
    EXPECT_TRUE(this->pasteboard().setDictatedText(QStringLiteral("Să ne vedem mâine 🙂")));
    EXPECT_TRUE(this->pasteboard().holdsDictatedText());
    EXPECT_EQ(this->dictatedText(), this->text("Să ne vedem mâine 🙂"));
}

TYPED_TEST_P(PasteboardContract, GivesEveryTypeBackInOrder) {
    const std::vector<PasteboardItem> items { PasteboardItem { { { QStringLiteral("text/html"), "<b>a</b>" },
        { QStringLiteral("application/x-own"), QByteArray("\0\1\xff", 3) }, { pasteboardTextType, "a" },
        { QStringLiteral("image/png"), QByteArray(400000, 'p') } } } };
    this->pasteboard().setItems(items);
    EXPECT_EQ(this->pasteboard().items(), items);
}

TYPED_TEST_P(PasteboardContract, EachContentReplacesTheOneBefore) {
    this->pasteboard().setItems(this->text("one"));
    EXPECT_TRUE(this->pasteboard().setDictatedText(QStringLiteral("two")));
    EXPECT_EQ(this->dictatedText(), this->text("two"));
    this->pasteboard().setItems(this->text("three"));
    EXPECT_EQ(this->pasteboard().items(), this->text("three"));
    EXPECT_FALSE(this->pasteboard().holdsDictatedText());
}

TYPED_TEST_P(PasteboardContract, AnEmptyTextIsAText) {
    EXPECT_TRUE(this->pasteboard().setDictatedText(QString()));
    EXPECT_EQ(this->dictatedText(), this->text(""));
}

TYPED_TEST_P(PasteboardContract, HandingOverKeepsTheContent) {
    this->pasteboard().handOver();
    EXPECT_THAT(this->pasteboard().items(), testing::IsEmpty());
    EXPECT_TRUE(this->pasteboard().setDictatedText(QStringLiteral("dictated")));
    this->pasteboard().handOver();
    EXPECT_EQ(this->dictatedText(), this->text("dictated"));
}

TYPED_TEST_P(PasteboardContract, ADictatedTextKeepsItsMarkAsAnItem) {
    EXPECT_TRUE(this->pasteboard().setDictatedText(QStringLiteral("one")));
    const std::vector<PasteboardItem> items = this->pasteboard().items();
    EXPECT_TRUE(this->pasteboard().setDictatedText(QStringLiteral("two")));
    this->pasteboard().restore(items);
    EXPECT_EQ(this->pasteboard().items(), items);
}

TYPED_TEST_P(PasteboardContract, RestoringBringsBackWhatADictatedTextDisplaced) {
    this->pasteboard().setItems(this->text("before"));
    const std::vector<PasteboardItem> items = this->pasteboard().items();
    EXPECT_TRUE(this->pasteboard().setDictatedText(QStringLiteral("dictated")));
    this->pasteboard().restore(items);
    EXPECT_EQ(this->pasteboard().items(), this->text("before"));
}

TYPED_TEST_P(PasteboardContract, RestoringNothingKeepsTheDictatedText) {
    EXPECT_TRUE(this->pasteboard().setDictatedText(QStringLiteral("dictated")));
    this->pasteboard().restore({});
    EXPECT_EQ(this->dictatedText(), this->text("dictated"));
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardContract, StartsEmpty, GivesADictatedTextBack,
    GivesEveryTypeBackInOrder, EachContentReplacesTheOneBefore, AnEmptyTextIsAText,
    HandingOverKeepsTheContent, ADictatedTextKeepsItsMarkAsAnItem,
    RestoringBringsBackWhatADictatedTextDisplaced, RestoringNothingKeepsTheDictatedText);
