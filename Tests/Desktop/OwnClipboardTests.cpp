#include "Desktop/TestPrograms.h"
#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Platform/Linux/X11/X11Pasteboard.h"
#include "Support/Print.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QMimeData>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
using testing::Contains;
using testing::Pair;

/// Something was copied in a window of the program itself, whose main thread is busy from then on.
class OwnClipboardTests : public testing::Test {
protected:
    X11Pasteboard pasteboard { std::make_shared<PasteProgress>() };
};

TEST_F(OwnClipboardTests, ATextComesBackAfterADictation) {
    QGuiApplication::clipboard()->setText(QStringLiteral("copied here"));
    pasteboard.readAhead();
    const std::vector<PasteboardItem> items = pasteboard.items();
    ASSERT_EQ(items.size(), 1);
    EXPECT_THAT(items.front().representations, Contains(Pair(pasteboardTextType, "copied here")));
    EXPECT_TRUE(pasteboard.setDictatedText(QStringLiteral("dictated")));
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "dictated");
    pasteboard.restore(items);
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "copied here");
}

TEST_F(OwnClipboardTests, EveryTypeComesBack) {
    auto *data = new QMimeData;
    data->setHtml(QStringLiteral("<b>a</b>"));
    QImage picture(3, 2, QImage::Format_RGB32);
    picture.fill(Qt::red);
    data->setImageData(picture);
    QGuiApplication::clipboard()->setMimeData(data);
    const std::vector<PasteboardItem> items = pasteboard.items();
    ASSERT_EQ(items.size(), 1);
    EXPECT_THAT(items.front().representations, Contains(Pair(QStringLiteral("text/html"), "<b>a</b>")));
    pasteboard.setItems(items);
    EXPECT_EQ(QImage::fromData(clipboard(QStringLiteral("image/png"))), picture);
}

TEST_F(OwnClipboardTests, WhatAnotherProgramCopiedAfterwardsCounts) {
    QGuiApplication::clipboard()->setText(QStringLiteral("copied here"));
    CopyingProgram other("copied there");
    const std::vector<PasteboardItem> items = pasteboard.items();
    ASSERT_EQ(items.size(), 1);
    EXPECT_THAT(items.front().representations, Contains(Pair(QStringLiteral("UTF8_STRING"), "copied there")));
}

TEST_F(OwnClipboardTests, ItOutlivesTheWindows) {
    QGuiApplication::clipboard()->setText(QStringLiteral("copied here"));
    pasteboard.handOver();
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), "copied here");
}
} // namespace
