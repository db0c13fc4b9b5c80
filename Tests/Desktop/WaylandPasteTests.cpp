#include "Desktop/TestPrograms.h"
#include "Desktop/WaylandPrograms.h"
#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Linux/Clipboard/PasteProgress.h"
#include "Platform/Linux/Wayland/WaylandFrontmostApplication.h"
#include "Platform/Linux/Wayland/WaylandPasteKeystroke.h"
#include "Platform/Linux/Wayland/WaylandPasteboard.h"
#include "Support/Print.h"
#include "Support/UntilTrue.h"
#include "TolmiApp/Dictation/SystemPasteService.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
const QString native = QStringLiteral("wayland");
const QString sentence = QStringLiteral("Să ne vedem mâine la ora 9.");

/// The paste service on the real adapters, and a user who copied something before.
class WaylandPasteTests : public testing::Test {
protected:
    PasteTargetCapture paste() { return service->paste(sentence, AppLanguage::English); }
    static QByteArray contentOf(const QString &name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    MainLoopClock clock;
    std::shared_ptr<PasteProgress> progress = std::make_shared<PasteProgress>();
    WaylandPasteboard pasteboard { progress };
    WaylandPasteKeystroke keystroke { progress };
    WaylandFrontmostApplication frontmost { DesktopEntries::ofThisDesktop() };
    std::shared_ptr<SystemPasteService> service
        = std::make_shared<SystemPasteService>(pasteboard, keystroke, frontmost, clock);

    const QString file = QDir::home().filePath(QStringLiteral("line"));
};

TEST_F(WaylandPasteTests, TheTextArrivesInANativeEditorAndTheFormerContentComesBack) {
    TestEditor editor({}, native);
    WaylandCopyingProgram user("copied before");
    paste();
    EXPECT_TRUE(editor.waitForText(sentence));
    EXPECT_TRUE(untilTrue([] { return waylandClipboard() == "copied before"; }));
    EXPECT_EQ(editor.text(), sentence);
}

TEST_F(WaylandPasteTests, APasteAfterAnotherArrivesToo) {
    TestEditor editor({}, native);
    WaylandCopyingProgram user("copied before");
    paste();
    EXPECT_TRUE(editor.waitForText(sentence));
    paste();
    EXPECT_TRUE(editor.waitForText(sentence + sentence));
    EXPECT_TRUE(untilTrue([] { return waylandClipboard() == "copied before"; }));
}

TEST_F(WaylandPasteTests, ATargetThatReadsLateGetsTheText) {
    TestEditor editor({}, native);
    WaylandCopyingProgram user("copied before");
    editor.hang();
    paste();
    bool isOver = false;
    clock.callAfter(1.5, [&] { isOver = true; });
    EXPECT_TRUE(untilTrue([&] { return isOver; }));
    editor.resume();
    EXPECT_TRUE(editor.waitForText(sentence)) << editor.text().toStdString();
    EXPECT_TRUE(untilTrue([] { return waylandClipboard() == "copied before"; }));
}

TEST_F(WaylandPasteTests, TheTargetIsNamedByItsDesktopFile) {
    WaylandProgram mousepad(QStringLiteral("mousepad"), {}, QStringLiteral("mousepad"));
    const PasteTargetCapture target = paste();
    EXPECT_EQ(target.appName, "Mousepad");
    EXPECT_EQ(target.bundleID, QStringLiteral("org.xfce.mousepad"));
}

/// A program that writes the first line with something in it to a file.
QString lineWriter(const QString &file) {
    return QStringLiteral(
        "while [ -z \"$line\" ]; do read -r line; done; printf %s \"$line\" >%1.new; mv %1.new %1")
        .arg(file);
}

TEST_F(WaylandPasteTests, TheTextArrivesInATerminal) {
    WaylandProgram terminal(QStringLiteral("foot"),
        { QStringLiteral("sh"), QStringLiteral("-c"), lineWriter(file) }, QStringLiteral("foot"));
    EXPECT_TRUE(frontmost.current()->isTerminal);
    WaylandCopyingProgram user("copied before");
    paste();
    EXPECT_TRUE(untilTrue([&] {
        typeOnWayland({ QStringLiteral("-k"), QStringLiteral("Return") });
        return QFile::exists(file);
    }));
    EXPECT_EQ(contentOf(file), sentence.toUtf8());
    EXPECT_TRUE(untilTrue([] { return waylandClipboard() == "copied before"; }));
}

TEST_F(WaylandPasteTests, TheTextArrivesInAWindowOfTheXServer) {
    TestEditor editor;
    WaylandCopyingProgram user("copied before");
    paste();
    EXPECT_TRUE(editor.waitForText(sentence));
    EXPECT_TRUE(untilTrue([] { return waylandClipboard() == "copied before"; }));
    EXPECT_EQ(editor.text(), sentence);
}

TEST_F(WaylandPasteTests, WithoutAFrontWindowTheTargetIsUnknown) {
    EXPECT_EQ(paste().bundleID, std::nullopt);
}

TEST_F(WaylandPasteTests, AKeyboardWithoutACompositorPostsNothing) {
    WaylandPasteKeystroke none(progress, "/nowhere");
    none.post();
    EXPECT_EQ(progress->postedAt(), std::nullopt);
}
} // namespace
