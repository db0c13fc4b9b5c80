#include "Platform/Linux/Evdev/UinputKeyboard.h"

#include "Platform/InputDeviceFolder.h"
#include "Platform/Linux/Evdev/UinputPasteKeystroke.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <linux/uinput.h>
#include <sys/stat.h>

namespace {
using testing::ElementsAre;
using testing::IsEmpty;

/// Notes what is asked of the device, and refuses one kind of request.
class NotingControl final : public DeviceControl {
public:
    int request(int, unsigned long code, quintptr argument) override {
        if (code == refused) {
            errno = error;
            return -1;
        }
        if (code == UI_SET_KEYBIT)
            keys.insert(unsigned(argument));
        else
            codes.push_back(code);
        if (code == UI_SET_EVBIT)
            kinds.insert(unsigned(argument));
        if (code == UI_DEV_SETUP)
            name = reinterpret_cast<const uinput_setup *>(argument)->name;
        return 0;
    }

    unsigned long refused = 0;
    int error = EINVAL;
    /// All requests but those for single keys.
    std::vector<unsigned long> codes;
    std::set<unsigned> keys;
    std::set<unsigned> kinds;
    std::string name;
};

class UinputKeyboardTests : public testing::Test {
protected:
    UinputKeyboardTests() {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }

    std::unique_ptr<UinputKeyboard> makeKeyboard() {
        return std::make_unique<UinputKeyboard>(QFile::encodeName(path), control);
    }
    /// The key code, then + or - for each key event; nothing else may be there but a report after each.
    std::vector<std::string> typed() {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray bytes = file.readAll();
        EXPECT_EQ(bytes.size() % qsizetype(2 * sizeof(input_event)), 0);
        std::vector<std::string> keys;
        for (qsizetype at = 0; at + qsizetype(2 * sizeof(input_event)) <= bytes.size();
             at += 2 * sizeof(input_event)) {
            std::array<input_event, 2> events {};
            std::memcpy(events.data(), bytes.constData() + at, sizeof events);
            EXPECT_EQ(events[0].type, EV_KEY);
            EXPECT_EQ(events[1].type, EV_SYN);
            EXPECT_EQ(events[1].code, SYN_REPORT);
            keys.push_back(std::to_string(events[0].code) + (events[0].value == 1 ? '+' : '-'));
        }
        return keys;
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("uinput"));
    std::shared_ptr<NotingControl> control = std::make_shared<NotingControl>();
};

TEST_F(UinputKeyboardTests, IsMadeOnceAndGoesWithItsOwner) {
    auto keyboard = makeKeyboard();
    EXPECT_FALSE(keyboard->isPrepared());
    EXPECT_TRUE(keyboard->prepare().isAvailable());
    EXPECT_TRUE(keyboard->prepare().isAvailable());
    EXPECT_TRUE(keyboard->type(PasteCommand::ControlV));
    EXPECT_THAT(control->codes, ElementsAre(UI_SET_EVBIT, UI_DEV_SETUP, UI_DEV_CREATE));
    EXPECT_EQ(control->name, "Tolmi virtual keyboard");
    EXPECT_THAT(control->kinds, ElementsAre(EV_KEY));
    keyboard.reset();
    EXPECT_EQ(control->codes.back(), UI_DEV_DESTROY);
}

TEST_F(UinputKeyboardTests, HasTheKeysOfAKeyboardButNotThoseThatSwitchTheMachineOff) {
    makeKeyboard()->prepare();
    for (unsigned key = 1; key <= 31; ++key)
        EXPECT_TRUE(control->keys.contains(key)) << key;
    for (const unsigned key : { KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_V, KEY_INSERT })
        EXPECT_TRUE(control->keys.contains(key)) << key;
    for (const unsigned key : { KEY_POWER, KEY_SLEEP, KEY_WAKEUP, KEY_SUSPEND, KEY_RESTART })
        EXPECT_FALSE(control->keys.contains(key)) << key;
}

struct TypedCase {
    const char *name;
    PasteCommand command;
    std::vector<std::string> keys;
};

class UinputTypedTests : public UinputKeyboardTests, public testing::WithParamInterface<TypedCase> { };

TEST_P(UinputTypedTests, TypesTheCommandAndLeavesNoKeyDown) {
    auto keyboard = makeKeyboard();
    keyboard->prepare();
    EXPECT_TRUE(keyboard->type(GetParam().command));
    EXPECT_EQ(typed(), GetParam().keys);
}

INSTANTIATE_TEST_SUITE_P(Table, UinputTypedTests,
    testing::Values(TypedCase { "controlV", PasteCommand::ControlV, { "29+", "47+", "47-", "29-" } },
        TypedCase {
            "controlShiftV", PasteCommand::ControlShiftV, { "29+", "42+", "47+", "47-", "42-", "29-" } },
        TypedCase { "shiftInsert", PasteCommand::ShiftInsert, { "42+", "110+", "110-", "42-" } }),
    [](const auto &info) { return info.param.name; });

TEST_F(UinputKeyboardTests, TypesAKeyThatMeansNothing) {
    auto keyboard = makeKeyboard();
    keyboard->prepare();
    EXPECT_TRUE(control->keys.contains(KEY_UNKNOWN));
    EXPECT_TRUE(keyboard->typeMeaninglessKey());
    EXPECT_THAT(typed(), ElementsAre("240+", "240-"));
}

TEST_F(UinputKeyboardTests, CommandsOfTwoThreadsDoNotMix) {
    auto keyboard = makeKeyboard();
    keyboard->prepare();
    constexpr int rounds = 200;
    std::thread other([&keyboard] {
        for (int i = 0; i < rounds; ++i)
            keyboard->typeMeaninglessKey();
    });
    for (int i = 0; i < rounds; ++i)
        keyboard->type(PasteCommand::ShiftInsert);
    other.join();
    std::string all;
    for (const std::string &key : typed())
        all += key + ' ';
    const QString text = QString::fromStdString(all);
    EXPECT_EQ(text.count(QLatin1String("42+ 110+ 110- 42- ")), rounds);
    EXPECT_EQ(text.count(QLatin1String("240+ 240- ")), rounds);
}

TEST_F(UinputKeyboardTests, TypesNothingBeforeItIsPrepared) {
    EXPECT_FALSE(makeKeyboard()->type(PasteCommand::ControlV));
    EXPECT_FALSE(makeKeyboard()->typeMeaninglessKey());
    EXPECT_THAT(typed(), IsEmpty());
    EXPECT_THAT(control->codes, IsEmpty());
}

TEST_F(UinputKeyboardTests, AKeyboardThatFailsIsMadeAnew) {
    path = QStringLiteral("/dev/full");
    auto keyboard = makeKeyboard();
    EXPECT_TRUE(keyboard->prepare().isAvailable());
    EXPECT_FALSE(keyboard->type(PasteCommand::ControlV));
    EXPECT_FALSE(keyboard->isPrepared());
    EXPECT_TRUE(keyboard->prepare().isAvailable());
    EXPECT_EQ(std::ranges::count(control->codes, UI_DEV_CREATE), 2);
}

TEST_F(UinputKeyboardTests, TellsWhatToDoAboutAMissingModule) {
    QFile::remove(path);
    const Availability availability = makeKeyboard()->prepare();
    EXPECT_TRUE(availability.reason.contains(path) && availability.reason.contains(QLatin1String("modprobe")))
        << availability.reason.toStdString();
}

TEST_F(UinputKeyboardTests, TellsThatTheRightIsMissing) {
    ::chmod(QFile::encodeName(folder.path()).constData(), 0755);
    ::chmod(QFile::encodeName(path).constData(), 0);
    const Unprivileged unprivileged;
    auto keyboard = makeKeyboard();
    const Availability availability = keyboard->prepare();
    EXPECT_TRUE(availability.reason.contains(QLatin1String("may not"))) << availability.reason.toStdString();
    EXPECT_FALSE(keyboard->isPrepared());
}

TEST_F(UinputKeyboardTests, TheRightMayComeLater) {
    QFile::remove(path);
    auto keyboard = makeKeyboard();
    EXPECT_FALSE(keyboard->prepare().isAvailable());
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_TRUE(keyboard->prepare().isAvailable());
}

TEST_F(UinputKeyboardTests, ARefusedRequestIsTold) {
    for (const unsigned long code :
        { UI_SET_EVBIT, UI_SET_KEYBIT, (unsigned long)UI_DEV_SETUP, (unsigned long)UI_DEV_CREATE }) {
        control->refused = code;
        auto keyboard = makeKeyboard();
        EXPECT_TRUE(keyboard->prepare().reason.contains(QLatin1String("Invalid argument"))) << code;
        EXPECT_FALSE(keyboard->isPrepared());
    }
}

TEST_F(UinputKeyboardTests, PostsTheCommandOfTheWindowInFront) {
    const std::shared_ptr<UinputKeyboard> keyboard = makeKeyboard();
    keyboard->prepare();
    bool isHeld = true;
    auto command = PasteCommand::ControlShiftV;
    UinputPasteKeystroke keystroke(
        keyboard, { .command = [&] { return command; }, .isModifierHeld = [&] { return isHeld; } });
    EXPECT_TRUE(keystroke.isModifierHeld());
    isHeld = false;
    EXPECT_FALSE(keystroke.isModifierHeld());
    keystroke.post();
    command = PasteCommand::ShiftInsert;
    keystroke.post();
    EXPECT_THAT(typed(), ElementsAre("29+", "42+", "47+", "47-", "42-", "29-", "42+", "110+", "110-", "42-"));
}
} // namespace
