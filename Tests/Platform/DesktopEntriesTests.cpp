#include "Platform/Linux/Desktop/DesktopEntries.h"

#include "Platform/Linux/Desktop/ActiveWindow.h"
#include "Support/Print.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {
class DesktopEntriesTests : public testing::Test {
protected:
    void write(const QString &name, const QByteArray &lines) {
        const QString path = folder.filePath(name);
        QDir().mkpath(QFileInfo(path).path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Desktop Entry]\nType=Application\n" + lines);
    }

    DesktopEntries entries() const {
        return { { folder.filePath(QStringLiteral("first")), folder.filePath(QStringLiteral("second")),
                     folder.filePath(QStringLiteral("missing")) },
            { QStringLiteral("ro_RO"), QStringLiteral("ro") } };
    }

    static QString idOf(const std::optional<DesktopEntry> &entry) {
        return entry ? entry->id : QStringLiteral("none");
    }

    QTemporaryDir folder;
};

ActiveWindow window(const char *instance, const char *className, const char *applicationID = "") {
    return { QLatin1String(instance), QLatin1String(className), QLatin1String(applicationID), {} };
}

TEST_F(DesktopEntriesTests, FindsByTheMostReliableCriterion) {
    write(QStringLiteral("first/org.example.Notes.desktop"),
        "Name=Notes\nExec=env A=b /usr/bin/notes-bin %U\n");
    write(QStringLiteral("first/writer.desktop"),
        "Name=Writer\nStartupWMClass=Office-Writer\nExec=office --writer\n");
    write(QStringLiteral("first/Painter.desktop"), "Name=Painter\nExec=\"/opt/painter/run me\"\n");
    DesktopEntries found = entries();
    EXPECT_EQ(idOf(found.find(window("x", "y", "org.example.notes"), {})), "org.example.Notes");
    EXPECT_EQ(idOf(found.find(window("office-writer", "Other"), {})), "writer");
    EXPECT_EQ(idOf(found.find(window("x", "painter"), {})), "Painter");
    EXPECT_EQ(idOf(found.find(window("notes", "Notes"), {})), "org.example.Notes");
    EXPECT_EQ(idOf(found.find(window("x", "y"), QStringLiteral("notes-bin"))), "org.example.Notes");
    EXPECT_EQ(idOf(found.find(window("x", "y"), QStringLiteral("office"))), "writer");
    EXPECT_EQ(idOf(found.find(window("x", "y"), QStringLiteral("z"))), "none");
    EXPECT_EQ(idOf(found.find(window("x", ""), {})), "none");
}

TEST_F(DesktopEntriesTests, NamesTheApplicationInTheUsersLanguage) {
    write(QStringLiteral("first/a.desktop"), "Name=Files\nName[de]=Dateien\nName[ro]=Fi\xc8\x99iere\n");
    write(QStringLiteral("first/b.desktop"), "Name=Files\nName[ro]=x\nName[ro_RO]=y\n");
    write(QStringLiteral("first/c.desktop"), "Name=Files\nName[de]=Dateien\n");
    DesktopEntries found = entries();
    EXPECT_EQ(found.find(window("a", "a"), {}).value().name, QStringLiteral("Fi\u0219iere"));
    EXPECT_EQ(found.find(window("b", "b"), {}).value().name, "y");
    EXPECT_EQ(found.find(window("c", "c"), {}).value().name, "Files");
}

TEST_F(DesktopEntriesTests, TheFirstFolderTakesPrecedence) {
    write(QStringLiteral("first/a.desktop"), "Name=Mine\n");
    write(QStringLiteral("second/a.desktop"), "Name=Theirs\n");
    EXPECT_EQ(entries().find(window("a", "a"), {}).value().name, "Mine");
}

TEST_F(DesktopEntriesTests, SubfoldersArePartOfTheId) {
    write(QStringLiteral("second/kde/notes.desktop"), "Name=Notes\n");
    EXPECT_EQ(idOf(entries().find(window("kde-notes", "x"), {})), "kde-notes");
}

TEST_F(DesktopEntriesTests, ReadsOnlyItsOwnGroupAndOnlyApplications) {
    write(
        QStringLiteral("first/a.desktop"), "# Name=Comment\nName=A\n[Desktop Action new]\nName=New window\n");
    write(QStringLiteral("first/link.desktop"), "Type=Link\nName=Link\n");
    EXPECT_EQ(entries().find(window("a", "a"), {}).value().name, "A");
    EXPECT_EQ(idOf(entries().find(window("link", "link"), {})), "none");
}

TEST_F(DesktopEntriesTests, NoticesNewFiles) {
    write(QStringLiteral("first/a.desktop"), "Name=A\n");
    DesktopEntries found = entries();
    EXPECT_EQ(idOf(found.find(window("b", "b"), {})), "none");
    write(QStringLiteral("second/b.desktop"), "Name=B\n");
    EXPECT_EQ(idOf(found.find(window("b", "b"), {})), "b");
}

struct TerminalCase {
    const char *instance;
    const char *className;
    bool isTerminal;
};

class TerminalTests : public testing::TestWithParam<TerminalCase> { };

TEST_P(TerminalTests, AreKnownByTheirClass) {
    EXPECT_EQ(window(GetParam().instance, GetParam().className).isTerminal(), GetParam().isTerminal);
}

INSTANTIATE_TEST_SUITE_P(Table, TerminalTests,
    testing::Values(TerminalCase { "xterm", "XTerm", true }, TerminalCase { "mytitle", "UXTerm", true },
        TerminalCase { "xfce4-terminal", "Xfce4-terminal", true },
        TerminalCase { "gnome-terminal-server", "Gnome-terminal", true },
        TerminalCase { "konsole", "konsole", true }, TerminalCase { "kitty", "something", true },
        TerminalCase { "pterm", "Pterm", true }, TerminalCase { "putty", "Putty", true },
        TerminalCase { "Zutty", "Zutty", true }, TerminalCase { "mousepad", "Mousepad", false },
        TerminalCase { "terminal-settings", "Settings", false }, TerminalCase { "", "st2", false }));

TEST(ShiftInsertTests, ThoseThatPasteAtItAreKnownByTheirClass) {
    for (const char *name : { "XTerm", "UXTerm", "URxvt", "Eterm", "Emacs", "Gvim", "Pterm", "Putty" })
        EXPECT_TRUE(window("mytitle", name).pastesAtShiftInsert()) << name;
    EXPECT_TRUE(window("xterm", "Something").pastesAtShiftInsert());
    for (const char *name : { "konsole", "kitty", "Xfce4-terminal", "Zutty", "Mousepad" })
        EXPECT_FALSE(window(name, name).pastesAtShiftInsert()) << name;
}
} // namespace
