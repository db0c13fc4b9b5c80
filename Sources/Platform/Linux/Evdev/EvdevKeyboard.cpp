#include "Platform/Linux/Evdev/EvdevKeyboard.h"

#include "Platform/Linux/Evdev/UinputKeyboard.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstring>
#include <limits>

#include <fcntl.h>
#include <linux/input.h>
#include <sys/stat.h>

namespace {
/// More than the kernel keeps for a reader; what comes meanwhile is read in the next round.
constexpr qsizetype eventsPerRound = 4096;
constexpr qsizetype eventsPerRead = 128;

constexpr size_t wordBits = sizeof(unsigned long) * CHAR_BIT;
/// One bit for each code of keys and buttons, as the kernel fills it in.
using KeyBits = std::array<unsigned long, KEY_CNT / wordBits>;

EvdevKeyboard::Keys keysOf(const KeyBits &bits) {
    static_assert(EvdevKeyboard::keyCount == BTN_MISC);
    EvdevKeyboard::Keys keys;
    for (size_t code = 0; code < keys.size(); ++code)
        keys[code] = bits[code / wordBits] >> (code % wordBits) & 1;
    return keys;
}

template <typename Answer>
bool ask(DeviceControl &control, int descriptor, unsigned long code, Answer &answer) {
    return control.request(descriptor, code, reinterpret_cast<quintptr>(answer.data())) >= 0;
}

/// The keys that every keyboard for writing has.
bool hasLettersAndRightAlt(const EvdevKeyboard::Keys &keys) {
    const auto hasAll = [&keys](unsigned first, unsigned last) {
        for (unsigned code = first; code <= last; ++code) {
            if (!keys[code])
                return false;
        }
        return true;
    };
    return keys[KEY_RIGHTALT] && hasAll(KEY_Q, KEY_P) && hasAll(KEY_A, KEY_L) && hasAll(KEY_Z, KEY_M);
}

EvdevKeyboard::Kind kindOfFailure(int error) {
    return error == EACCES || error == EPERM ? EvdevKeyboard::Kind::Refused : EvdevKeyboard::Kind::Missing;
}
} // namespace

EvdevKeyboard::EvdevKeyboard(FileDescriptor descriptor, std::shared_ptr<DeviceControl> control)
    : m_descriptor(std::move(descriptor))
    , m_control(std::move(control))
    , m_time(std::numeric_limits<double>::lowest()) { }

EvdevKeyboard::Opened EvdevKeyboard::open(const QByteArray &path, std::shared_ptr<DeviceControl> control) {
    FileDescriptor descriptor(::open(path.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    if (!descriptor.isValid())
        return { kindOfFailure(errno), {} };
    std::shared_ptr<EvdevKeyboard> keyboard(new EvdevKeyboard(std::move(descriptor), std::move(control)));
    if (!keyboard->isKeyboard() || keyboard->isOurOwn())
        return { Kind::Other, {} };
    keyboard->countTimeSteadily();
    const std::optional<Keys> held = keyboard->readHeldKeys();
    if (!held)
        return { Kind::Missing, {} };
    keyboard->m_heldKeys = *held;
    return { Kind::Keyboard, std::move(keyboard) };
}

bool EvdevKeyboard::isKeyboard() const {
    KeyBits bits {};
    return ask(*m_control, descriptor(), EVIOCGBIT(EV_KEY, sizeof bits), bits)
        && hasLettersAndRightAlt(keysOf(bits));
}

bool EvdevKeyboard::isOurOwn() const {
    std::array<char, 256> name {};
    return ask(*m_control, descriptor(), EVIOCGNAME(name.size() - 1), name)
        && std::strcmp(name.data(), UinputKeyboard::deviceName) == 0;
}

/// Without this the kernel takes the times from a clock that can be set.
void EvdevKeyboard::countTimeSteadily() {
    std::array<int, 1> clock { CLOCK_MONOTONIC };
    m_hasSteadyTimes = ask(*m_control, descriptor(), EVIOCSCLOCKID, clock);
}

std::optional<EvdevKeyboard::Keys> EvdevKeyboard::readHeldKeys() const {
    KeyBits bits {};
    if (!ask(*m_control, descriptor(), EVIOCGKEY(sizeof bits), bits))
        return {};
    return keysOf(bits);
}

bool EvdevKeyboard::isSameNode(const EvdevKeyboard &other) const {
    struct stat mine { };
    struct stat theirs { };
    return ::fstat(descriptor(), &mine) == 0 && ::fstat(other.descriptor(), &theirs) == 0
        && mine.st_dev == theirs.st_dev && mine.st_ino == theirs.st_ino;
}

bool EvdevKeyboard::read(std::vector<KeyChange> &changes, double now) {
    for (qsizetype round = 0; round < eventsPerRound / eventsPerRead; ++round) {
        const qsizetype kept = m_bytes.size();
        m_bytes.resize(kept + eventsPerRead * qsizetype(sizeof(input_event)));
        const ssize_t count = ::read(descriptor(), m_bytes.data() + kept, size_t(m_bytes.size() - kept));
        const int error = errno;
        m_bytes.truncate(kept + std::max<ssize_t>(count, 0));
        if (count < 0 && (error == EAGAIN || error == EINTR))
            return true;
        if (count <= 0 || !parse(changes, now)) {
            releaseAll(changes, now);
            return false;
        }
    }
    return true;
}

/// Takes the complete events from the bytes that were read. False if the device is gone.
bool EvdevKeyboard::parse(std::vector<KeyChange> &changes, double now) {
    constexpr auto size = qsizetype(sizeof(input_event));
    const qsizetype whole = m_bytes.size() / size * size;
    for (qsizetype at = 0; at < whole; at += size) {
        input_event event {};
        std::memcpy(&event, m_bytes.constData() + at, sizeof event);
        const double time = m_hasSteadyTimes ? event.input_event_sec + event.input_event_usec / 1e6 : now;
        if (event.type == EV_KEY) {
            keyEvent(event, time, changes);
        } else if (event.type == EV_SYN && event.code == SYN_DROPPED) {
            // What follows here is older than the state that is read now.
            m_bytes.remove(0, whole);
            return catchUp(changes, time);
        }
    }
    m_bytes.remove(0, whole);
    return true;
}

void EvdevKeyboard::keyEvent(const input_event &event, double time, std::vector<KeyChange> &changes) {
    constexpr int released = 0;
    constexpr int pressed = 1;
    // Some keyboards send the unknown key together with known ones.
    const bool isKey = event.code < keyCount && event.code != KEY_RESERVED && event.code != KEY_UNKNOWN;
    if (isKey && (event.value == released || event.value == pressed))
        becomes(event.code, event.value == pressed, time, changes);
}

/// Reports the difference that lost events made. Their order is lost too: in doubt a press is taken for one
/// that types a letter, so it comes before the other keys and after the releases.
bool EvdevKeyboard::catchUp(std::vector<KeyChange> &changes, double time) {
    const std::optional<Keys> held = readHeldKeys();
    if (!held)
        return false;
    for (unsigned code = 0; code < keyCount; ++code) {
        if (!held->test(code))
            becomes(code, false, time, changes);
    }
    if (held->test(KEY_RIGHTALT))
        becomes(KEY_RIGHTALT, true, time, changes);
    for (unsigned code = 0; code < keyCount; ++code) {
        if (held->test(code) && code != KEY_RESERVED && code != KEY_UNKNOWN)
            becomes(code, true, time, changes);
    }
    return true;
}

void EvdevKeyboard::releaseAll(std::vector<KeyChange> &changes, double now) {
    for (unsigned code = 0; code < keyCount; ++code)
        becomes(code, false, now, changes);
}

void EvdevKeyboard::becomes(unsigned code, bool isDown, double time, std::vector<KeyChange> &changes) {
    if (m_heldKeys[code] == isDown)
        return;
    m_heldKeys[code] = isDown;
    m_time = std::max(m_time, time);
    changes.push_back({ m_time, code, isDown });
}
