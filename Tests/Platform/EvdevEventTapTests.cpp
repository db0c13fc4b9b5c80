#include "Platform/Linux/Evdev/EvdevEventTap.h"

#include "Platform/InputDeviceFolder.h"
#include "Platform/Linux/Evdev/EvdevAccess.h"
#include "Platform/Linux/Evdev/UinputKeyboard.h"
#include "Platform/Linux/Keys/RightAltTranslator.h"
#include "Support/UntilTrue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <random>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// The key code of a report, then + or - for the alternate flag, or * for a chord.
std::string textOf(const TapEvent &event) {
    const char flag = event.flags ? '+' : '-';
    return std::to_string(event.keyCode) + (event.type == TapEventType::ChordBegan ? '*' : flag);
}

/// A tap on a folder of stand-ins, which runs on a thread of its own without the administrator's rights and
/// keeps what it reports.
class RunningTap {
public:
    explicit RunningTap(EvdevEventTapFactory::Surroundings surroundings)
        : m_factory(std::move(surroundings))
        , m_tap(m_factory.create([this](const TapEvent &event) { keep(event); })) {
        m_tap->setEnabled(true);
        m_thread = std::thread([this] {
            const Unprivileged unprivileged;
            m_tap->run();
        });
    }
    ~RunningTap() {
        m_tap->invalidate();
        m_thread.join();
    }

    EventTap &tap() { return *m_tap; }
    const EvdevEventTapFactory &factory() const { return m_factory; }
    std::vector<std::string> reports() {
        const std::lock_guard lock(m_mutex);
        return m_reports;
    }
    bool waitForReports(const std::vector<std::string> &expected) {
        const bool hasCome = untilTrue([&] { return reports().size() >= expected.size(); });
        EXPECT_EQ(reports(), expected);
        return hasCome;
    }
    /// What was reported before a press of the left key, which comes after everything else.
    std::vector<std::string> reportsUntilNow(InputDevice &keyboard) {
        const auto leftCount = [this] {
            return std::ranges::count_if(
                reports(), [](const std::string &report) { return report.starts_with("58"); });
        };
        const auto before = leftCount();
        keyboard.type(KEY_LEFTALT);
        EXPECT_TRUE(untilTrue([&] { return leftCount() == before + 2; }))
            << testing::PrintToString(reports());
        auto all = reports();
        all.resize(all.size() - std::min<size_t>(all.size(), 2));
        return all;
    }

private:
    void keep(const TapEvent &event) {
        const std::lock_guard lock(m_mutex);
        m_reports.push_back(textOf(event));
    }

    std::mutex m_mutex;
    std::vector<std::string> m_reports;
    EvdevEventTapFactory m_factory;
    std::shared_ptr<EventTap> m_tap;
    std::thread m_thread;
};

class EvdevEventTapTests : public testing::Test {
protected:
    EvdevEventTapFactory::Surroundings surroundings() {
        return { .folder = folder.path(), .control = folder.control(), .typesLetters = [this] {
                    return typesLetters.load();
                } };
    }
    void start() {
        running.emplace(surroundings());
        for (InputDevice *device : watched)
            EXPECT_TRUE(waitUntilWatched(*device));
    }
    static bool waitUntilWatched(InputDevice &device) {
        return untilTrue([&] { return device.stateCount() > 0; });
    }
    /// Waits until a device that said that events were lost has been asked for its keys.
    static void waitUntilAsked(InputDevice &device) {
        EXPECT_TRUE(untilTrue([&] { return device.stateCount() == 2; }));
    }
    InputDevice &plug(const QByteArray &name) {
        InputDevice &device = folder.plug(name);
        watched.push_back(&device);
        return device;
    }
    bool waitForReports(const std::vector<std::string> &expected) {
        return running->waitForReports(expected);
    }

    InputDeviceFolder folder;
    std::vector<InputDevice *> watched;
    std::atomic<bool> typesLetters = false;
    std::optional<RunningTap> running;
};

TEST_F(EvdevEventTapTests, ReportsBothAltKeys) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    keyboard.press(KEY_LEFTALT);
    keyboard.release(KEY_RIGHTALT);
    keyboard.release(KEY_LEFTALT);
    waitForReports({ "61+", "58+", "61+", "58-" });
}

TEST_F(EvdevEventTapTests, KnowsAKeyThatWasHeldBefore) {
    InputDevice &keyboard = plug("event0");
    keyboard.setHeld(KEY_LEFTALT, true);
    start();
    keyboard.type(KEY_RIGHTALT);
    keyboard.release(KEY_LEFTALT);
    waitForReports({ "61+", "61+", "58-" });
}

TEST_F(EvdevEventTapTests, ReportsNoOtherKeyAndNoRepeat) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.type(KEY_A);
    keyboard.press(KEY_RIGHTALT);
    for (int i = 0; i < 10; ++i)
        keyboard.send(KEY_RIGHTALT, 2);
    keyboard.send(KEY_LEFTALT, 2);
    keyboard.release(KEY_RIGHTALT);
    EXPECT_THAT(running->reportsUntilNow(keyboard), ElementsAre("61+", "61-"));
}

TEST_F(EvdevEventTapTests, AKeyThatJoinsAPressIsAChord) {
    InputDevice &keyboard = plug("event0");
    InputDevice &other = plug("event1");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    other.type(KEY_A);
    keyboard.release(KEY_RIGHTALT);
    waitForReports({ "61+", "61*", "61-" });
}

TEST_F(EvdevEventTapTests, ButtonsAndUnknownKeysAreNoChord) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    for (const unsigned code : { unsigned(BTN_LEFT), unsigned(KEY_FN), unsigned(KEY_UNKNOWN),
             unsigned(KEY_RESERVED), unsigned(KEY_MAX) })
        keyboard.type(code);
    keyboard.sendEvent(EV_REL, REL_X, 1, InputDevice::steadySeconds());
    keyboard.sendEvent(EV_KEY, 0xFFFF, 1, InputDevice::steadySeconds());
    keyboard.sendEvent(EV_KEY, KEY_A, 7, InputDevice::steadySeconds());
    keyboard.release(KEY_RIGHTALT);
    EXPECT_THAT(running->reportsUntilNow(keyboard), ElementsAre("61+", "61-"));
}

TEST_F(EvdevEventTapTests, HoldsALoneAltGrBack) {
    typesLetters = true;
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    keyboard.release(KEY_RIGHTALT);
    waitForReports({ "61+", "61-" });
}

// A thread that comes late still tells a letter from a dictation by the times of the events.
TEST_F(EvdevEventTapTests, ALateThreadFollowsTheTimesOfTheEvents) {
    typesLetters = true;
    InputDevice &keyboard = plug("event0");
    const double then = InputDevice::steadySeconds() - 10;
    keyboard.send(KEY_RIGHTALT, 1, then);
    keyboard.send(KEY_A, 1, then + 0.2);
    keyboard.send(KEY_A, 0, then + 0.24);
    keyboard.send(KEY_RIGHTALT, 0, then + 0.3);
    keyboard.send(KEY_RIGHTALT, 1, then + 1);
    keyboard.send(KEY_A, 1, then + 1.3);
    keyboard.send(KEY_A, 0, then + 1.4);
    keyboard.send(KEY_RIGHTALT, 0, then + 1.5);
    start();
    EXPECT_THAT(running->reportsUntilNow(keyboard), ElementsAre("61+", "61*", "61-"));
}

TEST_F(EvdevEventTapTests, KeysOfTwoKeyboardsComeInTheOrderOfTheirTimes) {
    typesLetters = true;
    InputDevice &first = plug("event0");
    InputDevice &second = plug("event1");
    const double then = InputDevice::steadySeconds() - 10;
    first.send(KEY_A, 1, then + 0.1);
    first.send(KEY_A, 0, then + 0.2);
    second.send(KEY_RIGHTALT, 1, then);
    second.send(KEY_RIGHTALT, 0, then + 0.15);
    start();
    EXPECT_THAT(running->reportsUntilNow(first), IsEmpty());
}

// The first one had been read already when its key went down, the second one not yet.
TEST_F(EvdevEventTapTests, AKeyWaitsForWhatCameBeforeItOnAKeyboardThatWasReadBefore) {
    typesLetters = true;
    InputDevice &first = folder.plug("event0");
    InputDevice &second = folder.plug("event1");
    constexpr double then = 100;
    std::atomic<int> askedCount = 0;
    EvdevEventTapFactory::Surroundings all = surroundings();
    all.now = [&] {
        switch (++askedCount) {
        case 1:
            return then;
        case 2:
            first.sendEvent(EV_KEY, KEY_RIGHTALT, 1, then + 0.001);
            return then + 0.003;
        default:
            return then + 1;
        }
    };
    second.sendEvent(EV_KEY, KEY_A, 1, then + 0.002);
    RunningTap tap(std::move(all));
    ASSERT_TRUE(untilTrue([&] { return askedCount > 2; }));
    first.sendEvent(EV_KEY, KEY_RIGHTALT, 0, then + 0.9);
    EXPECT_THAT(tap.reportsUntilNow(second), IsEmpty());
}

TEST_F(EvdevEventTapTests, WithoutSteadyTimesTheTimeOfReadingCounts) {
    typesLetters = true;
    InputDevice::Description description = InputDevice::keyboard();
    description.hasSteadyTimes = false;
    InputDevice &keyboard = folder.plug("event0", description);
    watched.push_back(&keyboard);
    start();
    // The clock on the wall was put back by a year meanwhile.
    keyboard.send(KEY_RIGHTALT, 1, 1e9);
    waitForReports({ "61+" });
    keyboard.send(KEY_RIGHTALT, 0, 1e9 - 3e7);
    waitForReports({ "61+", "61-" });
}

TEST_F(EvdevEventTapTests, LayoutIsAskedAtEachPress) {
    InputDevice &keyboard = plug("event0");
    start();
    const auto chord = [&] {
        keyboard.press(KEY_RIGHTALT);
        keyboard.type(KEY_A);
        keyboard.release(KEY_RIGHTALT);
    };
    chord();
    EXPECT_THAT(running->reportsUntilNow(keyboard), ElementsAre("61+", "61*", "61-"));
    typesLetters = true;
    const double then = InputDevice::steadySeconds();
    keyboard.send(KEY_RIGHTALT, 1, then);
    keyboard.send(KEY_A, 1, then + 0.01);
    keyboard.send(KEY_A, 0, then + 0.02);
    keyboard.send(KEY_RIGHTALT, 0, then + 0.03);
    EXPECT_EQ(running->reportsUntilNow(keyboard).size(), 5);
    typesLetters = false;
    chord();
    EXPECT_EQ(running->reportsUntilNow(keyboard).size(), 10);
}

TEST_F(EvdevEventTapTests, TellsOfEachPressOfAPlainAlt) {
    InputDevice &keyboard = plug("event0");
    std::atomic<int> pressCount = 0;
    EvdevEventTapFactory::Surroundings all = surroundings();
    all.plainAltWentDown = [&pressCount] { ++pressCount; };
    RunningTap tap(std::move(all));
    ASSERT_TRUE(waitUntilWatched(keyboard));
    keyboard.type(KEY_RIGHTALT);
    keyboard.type(KEY_A);
    keyboard.type(KEY_RIGHTALT);
    tap.reportsUntilNow(keyboard);
    EXPECT_EQ(pressCount, 2);
    typesLetters = true;
    keyboard.type(KEY_RIGHTALT);
    tap.reportsUntilNow(keyboard);
    typesLetters = false;
    tap.tap().setEnabled(false);
    keyboard.press(KEY_RIGHTALT);
    EXPECT_TRUE(untilTrue([&] { return tap.factory().isModifierHeld(); }));
    EXPECT_EQ(pressCount, 2);
}

TEST_F(EvdevEventTapTests, LostEventsReleaseTheKey) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    keyboard.setHeld(KEY_RIGHTALT, false);
    keyboard.sendDropped(InputDevice::steadySeconds());
    waitForReports({ "61+", "61-" });
}

TEST_F(EvdevEventTapTests, AfterLostEventsThePresentStateHolds) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.setHeld(KEY_RIGHTALT, true);
    const double now = InputDevice::steadySeconds();
    // The release is older than the state that is read, whatever it says.
    keyboard.sendBytes(InputDevice::bytesOf(EV_SYN, SYN_DROPPED, 0, now)
        + InputDevice::bytesOf(EV_KEY, KEY_RIGHTALT, 1, now)
        + InputDevice::bytesOf(EV_KEY, KEY_RIGHTALT, 0, now)
        + InputDevice::bytesOf(EV_SYN, SYN_REPORT, 0, now));
    waitUntilAsked(keyboard);
    EXPECT_THAT(running->reportsUntilNow(keyboard), ElementsAre("61+"));
    keyboard.release(KEY_RIGHTALT);
    EXPECT_TRUE(untilTrue([&] { return running->reports().back() == "61-"; }));
}

TEST_F(EvdevEventTapTests, ALostLetterStartsNothing) {
    typesLetters = true;
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.setHeld(KEY_RIGHTALT, true);
    keyboard.setHeld(KEY_A, true);
    keyboard.sendDropped(InputDevice::steadySeconds());
    waitUntilAsked(keyboard);
    keyboard.release(KEY_A);
    keyboard.release(KEY_RIGHTALT);
    EXPECT_THAT(running->reportsUntilNow(keyboard), IsEmpty());
}

TEST_F(EvdevEventTapTests, AKeyboardThatGoesReleasesItsKey) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    keyboard.unplug();
    waitForReports({ "61+", "61-" });
}

TEST_F(EvdevEventTapTests, AKeyboardThatHangsUpReleasesItsKey) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    keyboard.hangUp();
    waitForReports({ "61+", "61-" });
}

TEST_F(EvdevEventTapTests, ANodeThatGoesReleasesItsKey) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    ASSERT_EQ(::unlink(keyboard.path().constData()), 0);
    waitForReports({ "61+", "61-" });
}

TEST_F(EvdevEventTapTests, ARightThatIsWithdrawnReleasesTheKeyAndEndsTheListening) {
    InputDevice &keyboard = plug("event0");
    InputDevice &other = plug("event1");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    keyboard.setMode(0);
    waitForReports({ "61+", "61-" });
    keyboard.type(KEY_RIGHTALT);
    EXPECT_THAT(running->reportsUntilNow(other), ElementsAre("61+", "61-"));
}

TEST_F(EvdevEventTapTests, AnotherKeyboardUnderTheSameNameTakesItsPlace) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    // The new node takes the place of the old one at once.
    InputDevice &other = plug("event0");
    waitForReports({ "61+", "61-" });
    ASSERT_TRUE(waitUntilWatched(other));
    other.press(KEY_RIGHTALT);
    waitForReports({ "61+", "61-", "61+" });
}

TEST_F(EvdevEventTapTests, AKeyboardMayComeLater) {
    start();
    InputDevice &keyboard = plug("event12");
    ASSERT_TRUE(waitUntilWatched(keyboard));
    keyboard.type(KEY_RIGHTALT);
    waitForReports({ "61+", "61-" });
    keyboard.unplug();
    InputDevice &again = plug("event12");
    ASSERT_TRUE(waitUntilWatched(again));
    again.type(KEY_RIGHTALT);
    waitForReports({ "61+", "61-", "61+", "61-" });
}

TEST_F(EvdevEventTapTests, TheRightMayComeLater) {
    InputDevice &keyboard = folder.plug("event0", InputDevice::keyboard(), 0);
    start();
    InputDevice &other = plug("event1");
    ASSERT_TRUE(waitUntilWatched(other));
    EXPECT_EQ(keyboard.stateCount(), 0);
    keyboard.setMode(0644);
    ASSERT_TRUE(waitUntilWatched(keyboard));
    keyboard.type(KEY_RIGHTALT);
    waitForReports({ "61+", "61-" });
}

// The kernel removes it with the last device.
TEST_F(EvdevEventTapTests, TheFolderMayGoAndComeBack) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    keyboard.unplug();
    folder.remove();
    waitForReports({ "61+", "61-" });
    folder.make();
    InputDevice &again = plug("event0");
    ASSERT_TRUE(waitUntilWatched(again));
    again.press(KEY_RIGHTALT);
    waitForReports({ "61+", "61-", "61+" });
}

TEST_F(EvdevEventTapTests, AKeyThatANewKeyboardHoldsStartsNothing) {
    InputDevice &keyboard = plug("event0");
    start();
    InputDevice &made = folder.plug("made");
    made.setHeld(KEY_RIGHTALT, true);
    made.moveTo(folder.path() + "/event1");
    ASSERT_TRUE(waitUntilWatched(made));
    // Only the second release leaves no such key down.
    keyboard.type(KEY_RIGHTALT);
    made.release(KEY_RIGHTALT);
    EXPECT_THAT(running->reportsUntilNow(keyboard), ElementsAre("61-"));
    keyboard.press(KEY_RIGHTALT);
    EXPECT_TRUE(untilTrue([&] { return running->reports().back() == "61+"; }));
}

TEST_F(EvdevEventTapTests, TwoKeyboardsActAsOne) {
    InputDevice &first = plug("event0");
    InputDevice &second = plug("event1");
    start();
    first.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    second.type(KEY_RIGHTALT);
    EXPECT_THAT(running->reportsUntilNow(second), ElementsAre("61+"));
    second.press(KEY_RIGHTALT);
    second.unplug();
    EXPECT_EQ(running->reportsUntilNow(first).size(), 3);
    first.release(KEY_RIGHTALT);
    EXPECT_TRUE(untilTrue([&] { return running->reports().back() == "61-"; }));
}

TEST_F(EvdevEventTapTests, OnlyKeyboardsOfTheUserAreWatched) {
    InputDevice::Description numbers;
    for (unsigned key = KEY_KP7; key <= KEY_KPDOT; ++key)
        numbers.keys.set(key);
    numbers.keys.set(KEY_RIGHTALT);
    InputDevice::Description noAltGr = InputDevice::keyboard();
    noAltGr.keys.reset(KEY_RIGHTALT);
    InputDevice::Description own = InputDevice::keyboard();
    own.name = UinputKeyboard::deviceName;
    std::vector<InputDevice *> strangers;
    strangers.push_back(&folder.plug("event0", numbers));
    strangers.push_back(&folder.plug("event1", noAltGr));
    strangers.push_back(&folder.plug("event2", own));
    strangers.push_back(&folder.plug("mouse0"));
    strangers.push_back(&folder.plug("event"));
    strangers.push_back(&folder.plug("event3.bak"));
    InputDevice &keyboard = plug("event9");
    start();
    for (InputDevice *stranger : strangers) {
        EXPECT_EQ(stranger->stateCount(), 0) << stranger->path().toStdString();
        stranger->type(KEY_RIGHTALT);
    }
    EXPECT_THAT(running->reportsUntilNow(keyboard), IsEmpty());
}

TEST_F(EvdevEventTapTests, ListensOnlyAndGrabsNothing) {
    InputDevice &keyboard = plug("event0");
    start();
    keyboard.press(KEY_RIGHTALT);
    waitForReports({ "61+" });
    for (const int flags : folder.openFlags()) {
        EXPECT_EQ(flags & O_ACCMODE, O_RDONLY);
        EXPECT_TRUE(flags & O_NONBLOCK);
        EXPECT_TRUE(flags & O_CLOEXEC);
    }
    EXPECT_FALSE(keyboard.requests().contains(_IOC_NR(EVIOCGRAB)));
    EXPECT_TRUE(keyboard.requests().contains(_IOC_NR(EVIOCSCLOCKID)));
}

TEST_F(EvdevEventTapTests, EventsMayComeInPieces) {
    InputDevice &keyboard = plug("event0");
    start();
    QByteArray bytes;
    for (const int value : { 1, 0, 1, 0 }) {
        bytes += InputDevice::bytesOf(EV_KEY, KEY_RIGHTALT, value, InputDevice::steadySeconds());
        bytes += InputDevice::bytesOf(EV_SYN, SYN_REPORT, 0, InputDevice::steadySeconds());
    }
    for (qsizetype at = 0; at < bytes.size(); at += 7) {
        keyboard.sendBytes(bytes.mid(at, 7));
        EXPECT_TRUE(keyboard.waitUntilRead());
    }
    EXPECT_THAT(running->reportsUntilNow(keyboard), ElementsAre("61+", "61-", "61+", "61-"));
}

TEST_F(EvdevEventTapTests, KnowsWhetherAModifierIsHeld) {
    InputDevice &keyboard = plug("event0");
    InputDevice &other = plug("event1");
    start();
    const auto isHeld = [this] { return running->factory().isModifierHeld(); };
    EXPECT_FALSE(isHeld());
    for (const unsigned code : { KEY_LEFTCTRL, KEY_RIGHTSHIFT, KEY_RIGHTALT, KEY_LEFTMETA }) {
        keyboard.press(code);
        EXPECT_TRUE(untilTrue(isHeld)) << code;
        other.type(code);
        keyboard.release(code);
        EXPECT_TRUE(untilTrue([&] { return !isHeld(); })) << code;
    }
    keyboard.press(KEY_A);
    running->reportsUntilNow(keyboard);
    EXPECT_TRUE(untilTrue([&] { return !isHeld(); }));
    keyboard.press(KEY_LEFTCTRL);
    EXPECT_TRUE(untilTrue(isHeld));
    running->tap().invalidate();
    EXPECT_TRUE(untilTrue([&] { return !isHeld(); }));
}

TEST_F(EvdevEventTapTests, IsSilentWhileDisabled) {
    InputDevice &keyboard = plug("event0");
    start();
    running->tap().setEnabled(false);
    keyboard.press(KEY_RIGHTALT);
    EXPECT_TRUE(untilTrue([&] { return running->factory().isModifierHeld(); }));
    keyboard.release(KEY_RIGHTALT);
    EXPECT_TRUE(untilTrue([&] { return !running->factory().isModifierHeld(); }));
    running->tap().setEnabled(true);
    EXPECT_THAT(running->reportsUntilNow(keyboard), IsEmpty());
}

TEST_F(EvdevEventTapTests, ThereIsNoneWhenTheSystemRefuses) {
    EvdevEventTapFactory factory(surroundings());
    rlimit before {};
    ::getrlimit(RLIMIT_NOFILE, &before);
    const rlimit none { 0, before.rlim_max };
    ::setrlimit(RLIMIT_NOFILE, &none);
    const auto tap = factory.create([](const TapEvent &) {});
    ::setrlimit(RLIMIT_NOFILE, &before);
    EXPECT_FALSE(tap);
}

TEST_F(EvdevEventTapTests, EndsAtOnceWhenInvalidatedBefore) {
    InputDevice &keyboard = folder.plug("event0");
    EvdevEventTapFactory factory(surroundings());
    const auto tap = factory.create([](const TapEvent &) {});
    ASSERT_TRUE(tap);
    tap->invalidate();
    tap->run();
    EXPECT_EQ(keyboard.stateCount(), 0);
}

// A slow reader of the tap's reports makes the kernel's queue of folder events overflow.
TEST_F(EvdevEventTapTests, FindsAKeyboardWhoseComingWasLost) {
    InputDevice &keyboard = folder.plug("event0");
    EvdevEventTapFactory factory(surroundings());
    std::mutex busy;
    std::atomic<int> pressCount = 0;
    const auto tap = factory.create([&](const TapEvent &event) {
        pressCount += event.flags != 0;
        const std::lock_guard lock(busy);
    });
    std::unique_lock lock(busy);
    tap->setEnabled(true);
    std::thread thread([&tap] { tap->run(); });
    EXPECT_TRUE(waitUntilWatched(keyboard));
    keyboard.press(KEY_RIGHTALT);
    EXPECT_TRUE(untilTrue([&] { return pressCount == 1; }));
    const std::array<QByteArray, 2> files { folder.path() + "/js0", folder.path() + "/js1" };
    for (const QByteArray &file : files)
        EXPECT_GE(FileDescriptor(::open(file.constData(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600)).get(), 0);
    QFile limit(QStringLiteral("/proc/sys/fs/inotify/max_queued_events"));
    ASSERT_TRUE(limit.open(QIODevice::ReadOnly));
    const int most = limit.readAll().trimmed().toInt();
    for (int i = 0; i < most + 2; ++i)
        ::chmod(files[size_t(i) % 2].constData(), 0600);
    InputDevice &late = folder.plug("event1");
    lock.unlock();
    EXPECT_TRUE(waitUntilWatched(late));
    tap->invalidate();
    thread.join();
}

/// Two keyboards under the fingers of many people, and what a tap has to say of it: every change is known,
/// one after the other.
class Typists {
public:
    Typists(InputDeviceFolder &folder, bool typesLetters)
        : m_keyboards { &folder.plug("event0"), &folder.plug("event1") } {
        m_translator.setTypesLetters(typesLetters);
    }

    std::vector<InputDevice *> keyboards() const { return { m_keyboards.begin(), m_keyboards.end() }; }
    /// What the time is for the tap.
    double now() const { return m_now; }
    const std::vector<std::string> &expected() const { return m_expected; }

    void actOnce() {
        pass(m_pause(m_random));
        const size_t who = m_random() % m_keyboards.size();
        const unsigned code = codes[m_random() % codes.size()];
        switch (m_random() % 20) {
        case 0:
            m_keyboards[who]->send(code, 2, m_now);
            break;
        case 1:
            loseEvents(who);
            break;
        default:
            m_keyboards[who]->send(code, !m_held[who].test(code), m_now);
            change(who, code, !m_held[who].test(code));
        }
    }
    void letGo() {
        for (size_t who = 0; who < m_keyboards.size(); ++who) {
            for (const unsigned code : codes) {
                pass(0.3);
                m_keyboards[who]->send(code, 0, m_now);
                change(who, code, false);
            }
        }
    }

private:
    static constexpr std::array<unsigned, 5> codes { KEY_RIGHTALT, KEY_RIGHTALT, KEY_LEFTALT, KEY_A,
        KEY_LEFTSHIFT };

    /// The clock is always before the events, as the kernel's is. Whole microseconds, as the kernel counts.
    void pass(double seconds) {
        m_now = m_now + std::round(seconds * 1e6) / 1e6;
        if (const auto deadline = m_translator.deadline(); deadline && *deadline <= m_now)
            m_translator.advance(*deadline);
    }
    void loseEvents(size_t who) {
        std::set<unsigned> flipped { codes[m_random() % codes.size()], codes[m_random() % codes.size()] };
        const auto before = m_held[who];
        for (const unsigned code : flipped)
            m_keyboards[who]->setHeld(code, !before.test(code));
        const int asked = m_keyboards[who]->stateCount();
        m_keyboards[who]->sendDropped(m_now);
        for (const unsigned code : flipped) {
            if (before.test(code))
                change(who, code, false);
        }
        if (flipped.contains(KEY_RIGHTALT) && !before.test(KEY_RIGHTALT))
            change(who, KEY_RIGHTALT, true);
        for (const unsigned code : flipped) {
            if (code != KEY_RIGHTALT && !before.test(code))
                change(who, code, true);
        }
        // The state answers for the time when it is asked for.
        EXPECT_TRUE(untilTrue([&] { return m_keyboards[who]->stateCount() > asked; }));
    }
    void change(size_t who, unsigned code, bool isDown) {
        using Key = RightAltTranslator::Key;
        const auto isAnyDown = [this, code] { return m_held[0].test(code) || m_held[1].test(code); };
        const bool wasDown = isAnyDown();
        const bool isChange = m_held[who].test(code) != isDown;
        m_held[who].set(code, isDown);
        if (code != KEY_RIGHTALT && code != KEY_LEFTALT) {
            if (isChange)
                m_translator.keyChanged(Key::Other, isDown, m_now);
        } else if (wasDown != isAnyDown()) {
            m_translator.keyChanged(code == KEY_RIGHTALT ? Key::RightAlt : Key::LeftAlt, isDown, m_now);
        }
    }

    std::array<InputDevice *, 2> m_keyboards;
    std::array<std::bitset<KEY_CNT>, 2> m_held;
    std::mt19937 m_random { 20 };
    std::uniform_real_distribution<> m_pause { 0.001, 0.6 };
    std::atomic<double> m_now = 1000;
    std::vector<std::string> m_expected;
    RightAltTranslator m_translator { [this](
                                          const TapEvent &event) { m_expected.push_back(textOf(event)); } };
};

class EvdevRandomTests : public EvdevEventTapTests, public testing::WithParamInterface<bool> { };

TEST_P(EvdevRandomTests, ReportsWhatTenThousandEventsMean) {
    typesLetters = GetParam();
    Typists typists(folder, GetParam());
    EvdevEventTapFactory::Surroundings all = surroundings();
    all.now = [&typists] { return typists.now(); };
    RunningTap tap(std::move(all));
    for (InputDevice *keyboard : typists.keyboards())
        ASSERT_TRUE(waitUntilWatched(*keyboard));
    for (int i = 0; i < 10000; ++i)
        typists.actOnce();
    typists.letGo();
    EXPECT_TRUE(untilTrue([&] { return tap.reports().size() >= typists.expected().size(); }));
    EXPECT_EQ(tap.reports(), typists.expected());
    EXPECT_GT(typists.expected().size(), 2000);
}

INSTANTIATE_TEST_SUITE_P(Both, EvdevRandomTests, testing::Bool());

class EvdevAccessTests : public testing::Test {
protected:
    EvdevAccess access() {
        const Unprivileged unprivileged;
        return EvdevAccess::of(folder.path(), folder.control());
    }
    QString at(const char *name) const { return QString::fromUtf8(folder.path() + name); }

    InputDeviceFolder folder;
};

TEST_F(EvdevAccessTests, OneKeyboardIsEnough) {
    folder.plug("event0", {});
    folder.plug("event1");
    folder.plug("event2", InputDevice::keyboard(), 0);
    EXPECT_THAT(access().keyboards, ElementsAre(at("/event1")));
    EXPECT_THAT(access().refused, ElementsAre(at("/event2")));
    EXPECT_TRUE(access().availability().isAvailable());
}

TEST_F(EvdevAccessTests, NamesWhatCannotBeOpened) {
    folder.plug("event0", InputDevice::keyboard(), 0);
    folder.plug("event1", {});
    folder.plug("event10", InputDevice::keyboard(), 0);
    const QString reason = access().availability().reason;
    EXPECT_TRUE(reason.contains(at("/event0, ") + at("/event10 "))) << reason.toStdString();
    EXPECT_FALSE(reason.contains(at("/event1 "))) << reason.toStdString();
}

TEST_F(EvdevAccessTests, TellsThatThereIsNone) {
    folder.plug("event0", {});
    EXPECT_TRUE(access().availability().reason.contains(QLatin1String("no keyboard")));
    EXPECT_FALSE(EvdevAccess::of("/nowhere/input", folder.control()).availability().isAvailable());
}
} // namespace
