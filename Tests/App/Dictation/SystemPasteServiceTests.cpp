#include "TolmiApp/Dictation/SystemPasteService.h"

#include "Support/FakeFrontmostApplication.h"
#include "Support/FakePasteKeystroke.h"
#include "Support/FakePasteboard.h"
#include "Support/Print.h"
#include "Support/VirtualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
using testing::DoubleEq;
using testing::ElementsAre;
using testing::SizeIs;

const QString text = QStringLiteral("Să ne vedem mâine.");

std::vector<PasteboardItem> severalItems() {
    return { PasteboardItem { { { QStringLiteral("text/html"), "<b>a</b>" }, { pasteboardTextType, "a" } } },
        PasteboardItem { { { QStringLiteral("image/png"), QByteArray("\x89PNG\0", 5) } } } };
}

std::vector<PasteboardItem> dictated(const QString &text) {
    return { PasteboardItem { { { pasteboardTextType, text.toUtf8() } } } };
}

class SystemPasteServiceTests : public testing::Test {
protected:
    PasteTargetCapture paste(const QString &text) { return service->paste(text, AppLanguage::English); }

    VirtualClock clock;
    FakePasteboard pasteboard;
    FakePasteKeystroke keystroke;
    FakeFrontmostApplication frontmost;
    std::shared_ptr<SystemPasteService> service
        = std::make_shared<SystemPasteService>(pasteboard, keystroke, frontmost, clock);
};

TEST_F(SystemPasteServiceTests, GoesThroughItsStepsInOrder) {
    std::vector<QString> steps;
    frontmost.onCall = [&] { steps.push_back(QStringLiteral("front")); };
    pasteboard.onCall = [&](const QString &call) { steps.push_back(call.section(u' ', 0, 0)); };
    keystroke.onPost = [&] {
        steps.push_back(QStringLiteral("post"));
        EXPECT_THAT(clock.blockedSeconds, ElementsAre(DoubleEq(0.05)));
    };
    pasteboard.content = severalItems();
    paste(text);
    EXPECT_THAT(steps, ElementsAre("front", "items", "setDictatedText", "post"));
    clock.advance(0.999);
    EXPECT_THAT(steps, SizeIs(4));
    clock.advance(0.001);
    EXPECT_EQ(steps.back(), "setItems");
}

TEST_F(SystemPasteServiceTests, PutsTheTextOnTheClipboardMarkedAsDictated) {
    paste(text);
    EXPECT_EQ(pasteboard.content, dictated(text));
    EXPECT_TRUE(pasteboard.isMarked);
}

TEST_F(SystemPasteServiceTests, PastesNothingThatAnApplicationObeys) {
    const QString answer = QStringLiteral("a\r\nb\x1b[31m\tc\u009bd\x7f\n");
    paste(answer);
    EXPECT_EQ(pasteboard.content, dictated(QStringLiteral("a\nb[31m\tcd\n")));
    frontmost.application = FrontApplication { QStringLiteral("XTerm"), QStringLiteral("xterm"), true };
    paste(answer);
    EXPECT_EQ(pasteboard.content, dictated(QStringLiteral("a b[31m\tcd ")));
}

TEST_F(SystemPasteServiceTests, BringsEveryItemBackUnmarked) {
    pasteboard.content = severalItems();
    paste(text);
    clock.advance(1.0);
    EXPECT_EQ(pasteboard.content, severalItems());
    EXPECT_FALSE(pasteboard.isMarked);
}

TEST_F(SystemPasteServiceTests, AnEmptyClipboardKeepsTheDictatedText) {
    paste(text);
    clock.advance(10.0);
    EXPECT_EQ(pasteboard.content, dictated(text));
    EXPECT_THAT(pasteboard.calls, testing::Not(testing::Contains(QStringLiteral("setItems"))));
}

TEST_F(SystemPasteServiceTests, OverwritesWhatWasCopiedWithinTheSecond) {
    pasteboard.content = severalItems();
    paste(text);
    clock.advance(0.5);
    pasteboard.content = dictated(QStringLiteral("copied meanwhile"));
    clock.advance(0.5);
    EXPECT_EQ(pasteboard.content, severalItems());
}

TEST_F(SystemPasteServiceTests, TwoPastesWithinASecondLoseTheFormerContent) {
    pasteboard.content = severalItems();
    paste(QStringLiteral("first"));
    clock.advance(0.5);
    paste(QStringLiteral("second"));
    EXPECT_EQ(pasteboard.content, dictated(QStringLiteral("second")));
    clock.advance(0.5);
    EXPECT_EQ(pasteboard.content, severalItems());
    clock.advance(0.5);
    EXPECT_EQ(pasteboard.content, dictated(QStringLiteral("first")));
    EXPECT_FALSE(pasteboard.isMarked);
}

TEST_F(SystemPasteServiceTests, LivesUntilTheClipboardIsRestored) {
    pasteboard.content = severalItems();
    paste(text);
    const std::weak_ptr<SystemPasteService> weakService = service;
    service.reset();
    EXPECT_FALSE(weakService.expired());
    clock.advance(1.0);
    EXPECT_EQ(pasteboard.content, severalItems());
    EXPECT_TRUE(weakService.expired());
}

struct TargetCase {
    const char *name;
    std::optional<FrontApplication> front;
    AppLanguage language;
    QString appName;
    std::optional<QString> bundleID;
};

class SystemPasteTargetTests : public SystemPasteServiceTests,
                               public testing::WithParamInterface<TargetCase> { };

TEST_P(SystemPasteTargetTests, IsCaptured) {
    frontmost.application = GetParam().front;
    clock.shift(12.5);
    const PasteTargetCapture capture = service->paste(text, GetParam().language);
    EXPECT_EQ(capture.appName, GetParam().appName);
    EXPECT_EQ(capture.bundleID, GetParam().bundleID);
    EXPECT_EQ(capture.timestamp, VirtualClock::start + 12.5);
    EXPECT_EQ(keystroke.postCount, 1);
}

const QString unknown = QStringLiteral("Unknown target");
const QString notes = QStringLiteral("org.example.Notes");
INSTANTIATE_TEST_SUITE_P(Table, SystemPasteTargetTests,
    testing::Values(
        TargetCase { "noFrontApplication", std::nullopt, AppLanguage::English, unknown, std::nullopt },
        TargetCase { "noFrontApplicationInRomanian", std::nullopt, AppLanguage::Romanian,
            QStringLiteral("Destinatie necunoscuta"), std::nullopt },
        TargetCase { "nameAndIdentifier", FrontApplication { QStringLiteral("Notes"), notes },
            AppLanguage::English, QStringLiteral("Notes"), notes },
        TargetCase { "nameIsTrimmed", FrontApplication { QStringLiteral(" \n\u00a0Notes\t"), notes },
            AppLanguage::English, QStringLiteral("Notes"), notes },
        TargetCase {
            "emptyName", FrontApplication { QString(), notes }, AppLanguage::English, unknown, notes },
        TargetCase { "blankName", FrontApplication { QStringLiteral(" \n"), notes }, AppLanguage::English,
            unknown, notes },
        TargetCase {
            "noName", FrontApplication { std::nullopt, notes }, AppLanguage::English, unknown, notes },
        TargetCase { "noIdentifier", FrontApplication { QStringLiteral("Notes"), std::nullopt },
            AppLanguage::English, QStringLiteral("Notes"), std::nullopt },
        TargetCase { "emptyIdentifierStands", FrontApplication { QStringLiteral("Notes"), QString() },
            AppLanguage::English, QStringLiteral("Notes"), QString() }),
    [](const auto &info) { return info.param.name; });

struct ModifierCase {
    const char *name;
    int looksWithHeldModifier;
    int looks;
    double seconds;
};

class SystemPasteModifierTests : public SystemPasteServiceTests,
                                 public testing::WithParamInterface<ModifierCase> { };

TEST_P(SystemPasteModifierTests, AreWaitedForWithinBounds) {
    keystroke.looksWithHeldModifier = GetParam().looksWithHeldModifier;
    const Date before = clock.now();
    Date posted;
    keystroke.onPost = [&] { posted = clock.now(); };
    paste(text);
    EXPECT_NEAR(posted - before, GetParam().seconds, 1e-6);
    EXPECT_EQ(keystroke.lookCount, GetParam().looks);
    EXPECT_EQ(keystroke.postCount, 1);
    EXPECT_DOUBLE_EQ(clock.blockedSeconds.front(), 0.05);
}

INSTANTIATE_TEST_SUITE_P(Table, SystemPasteModifierTests,
    testing::Values(ModifierCase { "noneHeld", 0, 1, 0.05 }, ModifierCase { "letGoAtOnce", 1, 2, 0.06 },
        ModifierCase { "letGoLater", 10, 11, 0.15 }, ModifierCase { "letGoJustInTime", 24, 25, 0.29 },
        ModifierCase { "neverLetGo", 1000, 25, 0.3 }),
    [](const auto &info) { return info.param.name; });
} // namespace
