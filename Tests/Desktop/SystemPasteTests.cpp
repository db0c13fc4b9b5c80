#include "Desktop/DesktopPaste.h"
#include "Desktop/TestPrograms.h"
#include "Platform/DictationKey.h"
#include "Platform/Linux/X11/X11EventTap.h"
#include "Support/Print.h"
#include "Support/UntilTrue.h"

#include <QDir>
#include <QFile>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
const QString sentence = QStringLiteral("Să ne vedem mâine la ora 9.");

/// The paste service on the real adapters, and a user who copied something before.
class SystemPasteTests : public testing::Test, protected DesktopPaste {
protected:
    SystemPasteTests() { setLayout(QStringLiteral("us")); }

    PasteTargetCapture paste(const QString &text = sentence) {
        return service->paste(text, AppLanguage::English);
    }
    /// Leaves the clipboard alone afterwards, as many pastes in a row need it.
    void pasteOnly(const QString &text) {
        EXPECT_TRUE(pasteboard.setDictatedText(text));
        keystroke.post();
    }
    bool waitForClipboard(const QByteArray &text) {
        return untilTrue([&text] { return clipboard(QStringLiteral("UTF8_STRING")) == text; });
    }
};

TEST_F(SystemPasteTests, TheTextArrivesAndTheFormerContentComesBack) {
    TestEditor editor;
    CopyingProgram user("copied before");
    paste();
    EXPECT_TRUE(editor.waitForText(sentence));
    EXPECT_TRUE(waitForClipboard("copied before"));
    EXPECT_EQ(editor.text(), sentence);
}

TEST_F(SystemPasteTests, TheTextArrivesInEveryLayout) {
    TestEditor editor;
    QString expected;
    const auto pasteNext = [&](const QString &word) {
        pasteOnly(word);
        expected += word;
        EXPECT_TRUE(editor.waitForText(expected))
            << word.toStdString() << ": " << editor.text().toStdString();
    };
    for (const char *layout : { "ro", "fr", "de" }) {
        setLayout(QLatin1String(layout));
        pasteNext(QLatin1String(layout));
    }
    // The letter lies at another place.
    setLayout(QStringLiteral("us"), QStringLiteral("dvorak"));
    pasteNext(QStringLiteral("dvorak"));
    // The letter lies nowhere in the layout in use.
    for (const char *layout : { "us,ru", "us,gr" }) {
        setLayout(QLatin1String(layout));
        selectNextLayout();
        pasteNext(QLatin1String(layout));
    }
    // There is no layout with Latin letters to fall back to.
    for (const char *layout : { "ru", "gr", "ara" }) {
        setLayout(QLatin1String(layout));
        pasteNext(QLatin1String(layout));
    }
}

TEST_F(SystemPasteTests, AnEmptyClipboardKeepsTheText) {
    TestEditor editor;
    paste();
    EXPECT_TRUE(editor.waitForText(sentence));
    bool isOver = false;
    clock.callAfter(1.1, [&] { isOver = true; });
    EXPECT_TRUE(untilTrue([&] { return isOver; }));
    EXPECT_TRUE(waitForClipboard(sentence.toUtf8()));
}

TEST_F(SystemPasteTests, TwoPastesWithinASecond) {
    TestEditor editor;
    CopyingProgram user("copied before");
    paste(QStringLiteral("one "));
    EXPECT_TRUE(editor.waitForText(QStringLiteral("one ")));
    paste(QStringLiteral("two"));
    EXPECT_TRUE(editor.waitForText(QStringLiteral("one two")));
    EXPECT_TRUE(waitForClipboard("one "));
}

TEST_F(SystemPasteTests, ATargetThatReadsLateGetsTheText) {
    TestEditor editor;
    CopyingProgram user("copied before");
    editor.hang();
    paste();
    bool isOver = false;
    clock.callAfter(1.5, [&] { isOver = true; });
    EXPECT_TRUE(untilTrue([&] { return isOver; }));
    EXPECT_EQ(clipboard(QStringLiteral("UTF8_STRING")), sentence.toUtf8());
    editor.resume();
    EXPECT_TRUE(editor.waitForText(sentence)) << editor.text().toStdString();
    EXPECT_TRUE(waitForClipboard("copied before"));
}

TEST_F(SystemPasteTests, TheFormerContentComesBackOverWhatWasCopiedMeanwhile) {
    TestEditor editor;
    CopyingProgram before("copied before");
    paste();
    EXPECT_TRUE(editor.waitForText(sentence));
    CopyingProgram meanwhile("copied meanwhile");
    EXPECT_TRUE(waitForClipboard("copied before"));
}

TEST_F(SystemPasteTests, HeldModifiersDoNotSpoilThePaste) {
    TestEditor editor;
    QString expected;
    for (const int key : { leftShift, rightAlt, leftAlt, 37 /* Control */, 133 /* Super */ }) {
        pressKey(key);
        EXPECT_TRUE(keystroke.isModifierHeld()) << key;
        pasteOnly(QString::number(key));
        expected += QString::number(key);
        EXPECT_TRUE(editor.waitForText(expected)) << key << ": " << editor.text().toStdString();
        releaseKey(key);
        EXPECT_FALSE(keystroke.isModifierHeld()) << key;
    }
}

TEST_F(SystemPasteTests, AModifierThatIsHeldAllTheTimeDelaysThePasteOnly) {
    TestEditor editor;
    pressKey(leftShift);
    paste();
    EXPECT_TRUE(editor.waitForText(sentence)) << editor.text().toStdString();
    releaseKey(leftShift);
}

TEST_F(SystemPasteTests, AHeldAltDoesNotOpenTheMenu) {
    TestEditor editor({ QStringLiteral("--menu-bar") });
    QString expected;
    for (const int key : { leftAlt, rightAlt }) {
        pressKey(key);
        pasteOnly(QStringLiteral("a"));
        releaseKey(key);
        expected += u'a';
        EXPECT_TRUE(editor.waitForText(expected)) << key << ": " << editor.text().toStdString();
    }
}

TEST_F(SystemPasteTests, AHeldAltGrDoesNotSpoilThePaste) {
    setLayout(QStringLiteral("ro"));
    TestEditor editor;
    pressKey(rightAlt);
    paste();
    EXPECT_TRUE(editor.waitForText(sentence)) << editor.text().toStdString();
    releaseKey(rightAlt);
}

TEST_F(SystemPasteTests, KeysThatLockAreNoHeldModifiers) {
    outputOf(QStringLiteral("setxkbmap"), { QStringLiteral("-option"), QString() });
    typeKey(66 /* Caps Lock */);
    typeKey(77 /* Num Lock */);
    EXPECT_FALSE(keystroke.isModifierHeld());
    TestEditor editor;
    paste();
    EXPECT_TRUE(editor.waitForText(sentence)) << editor.text().toStdString();
    typeKey(66);
    typeKey(77);
}

TEST_F(SystemPasteTests, ThePasteCommandIsNoChordForTheHotkey) {
    setLayout(QStringLiteral("ro"));
    X11EventTapFactory taps(injectedKeys);
    std::atomic<int> downs = 0;
    const auto tap = taps.create([&](const TapEvent &event) { downs += event == DictationKey::pressed; });
    ASSERT_TRUE(tap);
    tap->setEnabled(true);
    std::thread thread([tap] { tap->run(); });
    pressKey(rightAlt);
    keystroke.post();
    // The command releases the key, which is what a short press is.
    EXPECT_TRUE(untilTrue([&] { return downs == 1; }));
    tap->invalidate();
    thread.join();
    releaseKey(rightAlt);
}

TEST_F(SystemPasteTests, AHungOwnerOfTheClipboardDoesNotKeepTheTextBack) {
    TestEditor editor;
    CopyingProgram user("copied before");
    user.hang();
    paste();
    EXPECT_TRUE(editor.waitForText(sentence));
}

/// All of the text in a window that has the focus, fetched by the user's own means after these keys; it is
/// selected then.
QByteArray textAfter(const QStringList &keys) {
    CopyingProgram nothing("nothing");
    QByteArray found;
    EXPECT_TRUE(untilTrue([&] {
        outputOf(QStringLiteral("xdotool"),
            QStringList { QStringLiteral("key") } + keys
                + QStringList { QStringLiteral("ctrl+a"), QStringLiteral("ctrl+c") });
        found = clipboard(QStringLiteral("UTF8_STRING"));
        return found != "nothing" && !found.isEmpty();
    }));
    return found;
}

TEST_F(SystemPasteTests, TheTextArrivesInMousepad) {
    TestProgram mousepad(QStringLiteral("mousepad"), {}, QStringLiteral("Mousepad"));
    const QByteArray typed = textAfter({ QStringLiteral("x") });
    EXPECT_TRUE(typed.endsWith('x'));
    const PasteTargetCapture target = paste();
    EXPECT_EQ(target.appName, "Mousepad");
    EXPECT_EQ(target.bundleID, QStringLiteral("org.xfce.mousepad"));
    // The editor may fetch the text late, so nothing else goes to the clipboard before its time is over.
    EXPECT_TRUE(waitForClipboard(typed));
    EXPECT_EQ(textAfter({}), sentence.toUtf8());
}

/// A terminal that runs a program which waits for a line and then writes the next one with something in it to
/// a file.
class TerminalPasteTests : public SystemPasteTests {
protected:
    const QString ready = QDir::home().filePath(QStringLiteral("ready"));
    const QString file = QDir::home().filePath(QStringLiteral("line"));
    const QString script = QStringLiteral(
        "read -r line; touch %1; while [ -z \"$line\" ]; do read -r line; done; printf %s \"$line\" >%2.new; "
        "mv %2.new %2")
                               .arg(ready, file);

    QByteArray lineAfterPaste() {
        constexpr int returnKey = 36;
        EXPECT_TRUE(untilTrue([this] {
            typeKey(returnKey);
            return QFile::exists(ready);
        }));
        paste();
        // Terminals fetch the text while they take further keys, so the first of these may overtake it.
        EXPECT_TRUE(untilTrue([this] {
            typeKey(returnKey);
            return QFile::exists(file);
        }));
        QFile written(file);
        return written.open(QIODevice::ReadOnly) ? written.readAll() : QByteArray();
    }
};

TEST_F(TerminalPasteTests, TheTextArrivesInXfceTerminal) {
    TestProgram terminal(QStringLiteral("xfce4-terminal"),
        { QStringLiteral("--disable-server"), QStringLiteral("-x"), QStringLiteral("sh"),
            QStringLiteral("-c"), script },
        QStringLiteral("Xfce4-terminal"));
    EXPECT_EQ(lineAfterPaste(), sentence.toUtf8());
}

TEST_F(TerminalPasteTests, TheTextArrivesInXtermAndTheFormerSelectionComesBack) {
    CopyingProgram user("copied before");
    CopyingProgram selecting("selected before", QStringLiteral("primary"));
    TestProgram terminal(QStringLiteral("xterm"),
        { QStringLiteral("-u8"), QStringLiteral("-e"), QStringLiteral("sh"), QStringLiteral("-c"), script },
        QStringLiteral("XTerm"));
    EXPECT_EQ(lineAfterPaste(), sentence.toUtf8());
    EXPECT_TRUE(waitForClipboard("copied before"));
    EXPECT_TRUE(untilTrue([] {
        return clipboard(QStringLiteral("UTF8_STRING"), QStringLiteral("primary")) == "selected before";
    }));
}

TEST_F(SystemPasteTests, WithoutAFrontWindowTheTargetIsUnknown) {
    const PasteTargetCapture target = paste();
    EXPECT_EQ(target.appName, "Unknown target");
    EXPECT_EQ(target.bundleID, std::nullopt);
}

TEST_F(SystemPasteTests, AWindowWithoutADesktopFileNamesItself) {
    TestEditor editor;
    std::optional<FrontApplication> front;
    ASSERT_TRUE(untilTrue([&] { return (front = frontmost.current()).has_value(); }));
    EXPECT_EQ(front->localizedName, QStringLiteral("tolmi_test_editor"));
    EXPECT_EQ(front->bundleIdentifier, QStringLiteral("tolmi_test_editor"));
}

TEST_F(SystemPasteTests, AWindowThatGoesMeanwhileIsNoTarget) {
    for (int round = 0; round < 3; ++round) {
        { TestEditor editor; }
        untilTrue([this] { return !frontmost.current(); });
    }
    EXPECT_EQ(frontmost.current(), std::nullopt);
}
} // namespace
