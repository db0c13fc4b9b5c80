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

private:
    Made m_made;
};

TYPED_TEST_SUITE_P(PasteboardContract);

TYPED_TEST_P(PasteboardContract, StartsEmpty) {
    EXPECT_THAT(this->pasteboard().items(), testing::IsEmpty());
}

TYPED_TEST_P(PasteboardContract, GivesADictatedTextBack) {
    this->pasteboard().setDictatedText(QStringLiteral("Să ne vedem mâine 🙂"));
    EXPECT_EQ(this->pasteboard().items(), this->text("Să ne vedem mâine 🙂"));
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
    this->pasteboard().setDictatedText(QStringLiteral("two"));
    EXPECT_EQ(this->pasteboard().items(), this->text("two"));
    this->pasteboard().setItems(this->text("three"));
    EXPECT_EQ(this->pasteboard().items(), this->text("three"));
}

TYPED_TEST_P(PasteboardContract, AnEmptyTextIsAText) {
    this->pasteboard().setDictatedText(QString());
    EXPECT_EQ(this->pasteboard().items(), this->text(""));
}

TYPED_TEST_P(PasteboardContract, HandingOverKeepsTheContent) {
    this->pasteboard().handOver();
    EXPECT_THAT(this->pasteboard().items(), testing::IsEmpty());
    this->pasteboard().setDictatedText(QStringLiteral("dictated"));
    this->pasteboard().handOver();
    EXPECT_EQ(this->pasteboard().items(), this->text("dictated"));
}

REGISTER_TYPED_TEST_SUITE_P(PasteboardContract, StartsEmpty, GivesADictatedTextBack,
    GivesEveryTypeBackInOrder, EachContentReplacesTheOneBefore, AnEmptyTextIsAText,
    HandingOverKeepsTheContent);
