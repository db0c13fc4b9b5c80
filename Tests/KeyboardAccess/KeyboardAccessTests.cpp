#include "KeyboardAccess/KeyboardAccess.h"

#include "KeyboardAccess/KeyboardRule.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <csignal>
#include <cstring>
#include <filesystem>
#include <fstream>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {
namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using State = KeyboardAccess::State;

const std::string reload = "udevadm control --reload";
const std::string trigger = "udevadm trigger --action=change --subsystem-match=input --subsystem-match=misc "
                            "--sysname-match=event* --sysname-match=uinput";

std::string textOf(const fs::path &path) {
    std::ifstream file(path);
    return { std::istreambuf_iterator<char>(file), {} };
}

void write(const fs::path &path, std::string_view text) {
    std::ofstream(path) << text;
}

mode_t modeOf(const fs::path &path) {
    struct stat status { };
    EXPECT_EQ(::lstat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

/// A machine in a folder, whose administrator runs the tests.
class KeyboardAccessTests : public testing::Test {
protected:
    KeyboardAccessTests() {
        fs::create_directories(rules);
        fs::create_directories(root / "dev/input");
        write(rules / "60-other.rules", "# another\n");
    }

    KeyboardAccess access() {
        return KeyboardAccess({ .root = root.string(),
            .owner = owner,
            .run = [this](const std::string &name, const std::vector<std::string> &arguments) {
                std::string line = name;
                for (const std::string &argument : arguments)
                    line += ' ' + argument;
                // What is run finds everything written.
                EXPECT_EQ(fs::exists(rule), isInstalledWhenRun) << line;
                lines.push_back(line);
                return line == failing ? 1 : 0;
            } });
    }
    void install() {
        isInstalledWhenRun = true;
        access().install();
    }
    void remove() {
        isInstalledWhenRun = false;
        access().remove();
    }
    std::vector<std::string> filesOf(const fs::path &folder) const {
        std::vector<std::string> names;
        for (const auto &entry : fs::directory_iterator(folder))
            names.push_back(entry.path().filename().string());
        std::ranges::sort(names);
        return names;
    }
    /// Neither operation may act, and nothing may have changed.
    void expectRefused(const char *reason) {
        for (const bool isInstall : { true, false }) {
            try {
                isInstall ? access().install() : access().remove();
                ADD_FAILURE() << "not refused: " << isInstall;
            } catch (const KeyboardAccess::Failure &failure) {
                EXPECT_THAT(failure.what(), HasSubstr(reason));
                EXPECT_EQ(std::string(failure.what()).find('\n'), std::string::npos);
            }
        }
        EXPECT_THAT(lines, IsEmpty());
    }

    QTemporaryDir folder;
    fs::path root = folder.path().toStdString();
    fs::path rules = root / "etc/udev/rules.d";
    fs::path rule = rules / "70-tolmi.rules";
    uid_t owner = ::geteuid();
    bool isInstalledWhenRun = true;
    std::string failing;
    std::vector<std::string> lines;
};

TEST_F(KeyboardAccessTests, InstallsOneFileAndAppliesIt) {
    const mode_t before = ::umask(0777);
    install();
    ::umask(before);
    EXPECT_EQ(textOf(rule), keyboardRule);
    EXPECT_EQ(modeOf(rule), 0644);
    EXPECT_THAT(filesOf(rules), ElementsAre("60-other.rules", "70-tolmi.rules"));
    EXPECT_THAT(lines, ElementsAre("modprobe uinput", reload, trigger));
    EXPECT_EQ(access().state(), State::Installed);
}

TEST_F(KeyboardAccessTests, GivesTheUserAtTheSeatKeyboardsAndNothingElse) {
    EXPECT_THAT(keyboardRule,
        HasSubstr(R"(SUBSYSTEM=="input", KERNEL=="event*", ENV{ID_INPUT_KEYBOARD}=="1", TAG+="uaccess")"));
    EXPECT_THAT(keyboardRule, HasSubstr(R"(SUBSYSTEM=="misc", KERNEL=="uinput",)"));
    // No right for groups or for everybody, no program to run.
    for (const char *word : { "MODE", "GROUP", "OWNER", "RUN", "PROGRAM", "IMPORT" })
        EXPECT_EQ(keyboardRule.find(word), std::string_view::npos) << word;
}

TEST_F(KeyboardAccessTests, ReplacesTheRuleOfAnotherVersion) {
    write(rule, "# Tolmi: an older rule\n");
    EXPECT_EQ(access().state(), State::Outdated);
    install();
    EXPECT_EQ(textOf(rule), keyboardRule);
    install();
    EXPECT_EQ(access().state(), State::Installed);
}

TEST_F(KeyboardAccessTests, RemovesWhatItHasInstalledAndNothingElse) {
    install();
    lines.clear();
    remove();
    EXPECT_THAT(filesOf(rules), ElementsAre("60-other.rules"));
    EXPECT_THAT(lines, ElementsAre(reload, trigger));
    EXPECT_EQ(access().state(), State::NotInstalled);
    // Once more does no harm.
    remove();
}

TEST_F(KeyboardAccessTests, WorksWithoutTheModuleForVirtualKeyboards) {
    failing = "modprobe uinput";
    install();
    EXPECT_EQ(lines.size(), 3);
}

TEST_F(KeyboardAccessTests, SaysThatTheRuleHoldsOnlyAfterARestart) {
    for (const std::string &line : { reload, trigger }) {
        failing = line;
        EXPECT_THROW(install(), KeyboardAccess::Failure);
        EXPECT_EQ(access().state(), State::Installed);
        EXPECT_THROW(remove(), KeyboardAccess::Failure);
        EXPECT_EQ(access().state(), State::NotInstalled);
    }
}

TEST_F(KeyboardAccessTests, RefusesALinkInThePlaceOfTheRule) {
    const fs::path victim = root / "victim";
    for (const std::string_view text : { "precious", "# Tolmi: so that it looks like ours" }) {
        write(victim, text);
        fs::create_symlink(victim, rule);
        expectRefused("70-tolmi.rules");
        EXPECT_THROW((void)access().state(), KeyboardAccess::Failure);
        EXPECT_TRUE(fs::is_symlink(rule));
        EXPECT_EQ(textOf(victim), text);
        fs::remove(rule);
    }
    fs::create_symlink(root / "missing", rule);
    expectRefused("70-tolmi.rules");
    EXPECT_FALSE(fs::exists(root / "missing"));
}

TEST_F(KeyboardAccessTests, RefusesWhatIsNoFile) {
    fs::create_directory(rule);
    expectRefused("70-tolmi.rules");
    fs::remove(rule);
    // Would wait for a writer for ever.
    ASSERT_EQ(::mkfifo(rule.c_str(), 0600), 0);
    expectRefused("not a file");
}

TEST_F(KeyboardAccessTests, RefusesARuleThatIsNotItsOwn) {
    write(rule, "# of the administrator\n");
    expectRefused("not made by Tolmi");
    EXPECT_EQ(textOf(rule), "# of the administrator\n");
}

TEST_F(KeyboardAccessTests, FollowsNoLinkOnTheWay) {
    for (const char *step : { "etc", "etc/udev", "etc/udev/rules.d" }) {
        SCOPED_TRACE(step);
        fs::rename(root / step, root / "moved");
        fs::create_symlink(root / "moved", root / step);
        expectRefused(step);
        fs::remove(root / step);
        fs::rename(root / "moved", root / step);
    }
    EXPECT_THAT(filesOf(rules), ElementsAre("60-other.rules"));
}

TEST_F(KeyboardAccessTests, RefusesFoldersInWhichOthersMayWrite) {
    for (const char *step : { "etc", "etc/udev", "etc/udev/rules.d" }) {
        SCOPED_TRACE(step);
        for (const mode_t mode : { 0777, 0775, 01777 }) {
            ASSERT_EQ(::chmod((root / step).c_str(), mode), 0);
            expectRefused(step);
        }
        ASSERT_EQ(::chmod((root / step).c_str(), 0755), 0);
    }
    owner = ::geteuid() + 1;
    expectRefused("etc");
    EXPECT_THAT(filesOf(rules), ElementsAre("60-other.rules"));
}

TEST_F(KeyboardAccessTests, SaysThatThereIsNoUdev) {
    fs::remove_all(root / "etc/udev");
    EXPECT_THROW(install(), KeyboardAccess::Failure);
    EXPECT_FALSE(fs::exists(root / "etc/udev"));
    EXPECT_EQ(access().state(), State::NotInstalled);
}

TEST_F(KeyboardAccessTests, FollowsNoLinkUnderTheNameOfItsNewFile) {
    const fs::path victim = root / "victim";
    write(victim, "precious");
    fs::create_symlink(victim, rules / (".70-tolmi.rules." + std::to_string(::getpid())));
    install();
    EXPECT_EQ(textOf(victim), "precious");
    EXPECT_THAT(filesOf(rules), ElementsAre("60-other.rules", "70-tolmi.rules"));
}

TEST_F(KeyboardAccessTests, LeavesNothingHalfWritten) {
    write(rule, "# Tolmi: an older rule\n");
    rlimit before {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tight { 10, before.rlim_max };
    ::setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_THROW(install(), KeyboardAccess::Failure);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(textOf(rule), "# Tolmi: an older rule\n");
    EXPECT_THAT(filesOf(rules), ElementsAre("60-other.rules", "70-tolmi.rules"));
    EXPECT_THAT(lines, IsEmpty());
}

/// Devices that were given to one user, as the login manager does it.
class GivenDevicesTests : public KeyboardAccessTests {
protected:
    /// Whether the file system can do so.
    static bool give(const fs::path &path) {
        struct Entry {
            uint16_t tag;
            uint16_t permissions;
            uint32_t id;
        };
        constexpr uint32_t none = 0xFFFFFFFF;
        struct {
            uint32_t version = 2;
            std::array<Entry, 5> entries;
        } list;
        list.entries
            = { { { 1, 6, none }, { 2, 6, 1000 }, { 4, 0, none }, { 16, 6, none }, { 32, 0, none } } };
        write(path, "");
        EXPECT_EQ(::chmod(path.c_str(), 0600), 0);
        return ::setxattr(path.c_str(), listName, &list, sizeof list, 0) == 0;
    }
    static bool isGiven(const fs::path &path) { return ::getxattr(path.c_str(), listName, nullptr, 0) > 0; }

    static constexpr const char *listName = "system.posix_acl_access";
};

TEST_F(GivenDevicesTests, RemovingTheRuleTakesThemBack) {
    const fs::path keyboard = root / "dev/input/event3";
    const fs::path uinput = root / "dev/uinput";
    if (!give(keyboard))
        GTEST_SKIP() << "no access lists in this file system";
    give(uinput);
    EXPECT_EQ(modeOf(keyboard), 0660);
    remove();
    for (const fs::path &path : { keyboard, uinput }) {
        EXPECT_FALSE(isGiven(path)) << path;
        EXPECT_EQ(modeOf(path), 0600) << path;
    }
}

TEST_F(GivenDevicesTests, NothingElseIsTouched) {
    const fs::path mouse = root / "dev/input/mouse0";
    const fs::path stranger = root / "stranger";
    if (!give(mouse))
        GTEST_SKIP() << "no access lists in this file system";
    give(stranger);
    fs::create_symlink(stranger, root / "dev/input/event0");
    fs::create_symlink(stranger, root / "dev/uinput");
    fs::create_directory(root / "dev/input/event1");
    remove();
    EXPECT_TRUE(isGiven(mouse));
    EXPECT_TRUE(isGiven(stranger));
    EXPECT_EQ(modeOf(stranger), 0660);
}
} // namespace
