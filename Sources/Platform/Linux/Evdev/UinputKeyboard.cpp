#include "Platform/Linux/Evdev/UinputKeyboard.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <linux/uinput.h>
#include <unistd.h>

namespace {
/// No layout gives it a meaning.
constexpr unsigned meaninglessKey = KEY_UNKNOWN;

/// The keys in the order in which they go down.
std::vector<unsigned> keysOf(PasteCommand command) {
    switch (command) {
    case PasteCommand::ControlV:
        return { KEY_LEFTCTRL, KEY_V };
    case PasteCommand::ControlShiftV:
        return { KEY_LEFTCTRL, KEY_LEFTSHIFT, KEY_V };
    case PasteCommand::ShiftInsert:
        return { KEY_LEFTSHIFT, KEY_INSERT };
    }
    Q_UNREACHABLE();
}

input_event eventOf(unsigned type, unsigned code, int value) {
    input_event event {};
    event.type = quint16(type);
    event.code = quint16(code);
    event.value = value;
    return event;
}

/// Every key has its own report, so that the modifiers are down before the key that they modify.
void append(std::vector<input_event> &events, unsigned code, bool isDown) {
    events.push_back(eventOf(EV_KEY, code, isDown));
    events.push_back(eventOf(EV_SYN, SYN_REPORT, 0));
}

std::vector<input_event> eventsOf(const std::vector<unsigned> &keys) {
    std::vector<input_event> events;
    for (const unsigned key : keys)
        append(events, key, true);
    for (auto key = keys.rbegin(); key != keys.rend(); ++key)
        append(events, *key, false);
    return events;
}

Availability whyNot(int error, const QString &path) {
    if (error == ENOENT || error == ENODEV || error == ENXIO)
        return Availability::unavailable(QStringLiteral(
            "There is no %1. Load the kernel module \"uinput\": \"modprobe uinput\" as root does so.")
                                             .arg(path));
    if (error == EACCES || error == EPERM)
        return Availability::unavailable(
            QStringLiteral("Tolmi may not type by %1. Allow Tolmi to use the right Alt key everywhere; this "
                           "asks for an administrator's password.")
                .arg(path));
    return Availability::unavailable(QStringLiteral("No keyboard can be made by %1: %2")
                                         .arg(path, QString::fromLocal8Bit(std::strerror(error))));
}
} // namespace

UinputKeyboard::UinputKeyboard(QByteArray path, std::shared_ptr<DeviceControl> control)
    : m_path(std::move(path))
    , m_control(std::move(control)) { }

UinputKeyboard::~UinputKeyboard() {
    if (m_descriptor.isValid())
        m_control->request(m_descriptor.get(), UI_DEV_DESTROY, 0);
}

bool UinputKeyboard::isPrepared() const {
    const std::lock_guard lock(m_mutex);
    return m_descriptor.isValid();
}

Availability UinputKeyboard::prepare() {
    const std::lock_guard lock(m_mutex);
    if (m_descriptor.isValid())
        return Availability::available();
    FileDescriptor descriptor(::open(m_path.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC));
    if (!descriptor.isValid() || !describe(descriptor.get())
        || m_control->request(descriptor.get(), UI_DEV_CREATE, 0) < 0)
        return whyNot(errno, QFile::decodeName(m_path));
    m_descriptor = std::move(descriptor);
    return Availability::available();
}

/// Tells the kernel which keys there are: all that writing needs, since some window systems take a device
/// with few keys for a set of buttons. Keys that switch the machine off are not among them.
bool UinputKeyboard::describe(int descriptor) const {
    const auto request = [this, descriptor](unsigned long code, quintptr argument) {
        return m_control->request(descriptor, code, argument) >= 0;
    };
    if (!request(UI_SET_EVBIT, EV_KEY))
        return false;
    for (unsigned key = KEY_ESC; key <= KEY_DELETE; ++key) {
        if (!request(UI_SET_KEYBIT, key))
            return false;
    }
    if (!request(UI_SET_KEYBIT, meaninglessKey))
        return false;
    uinput_setup setup {};
    setup.id.bustype = BUS_VIRTUAL;
    std::strncpy(setup.name, deviceName, sizeof setup.name - 1);
    return request(UI_DEV_SETUP, reinterpret_cast<quintptr>(&setup));
}

bool UinputKeyboard::type(PasteCommand command) {
    return typeTogether(keysOf(command));
}

bool UinputKeyboard::typeMeaninglessKey() {
    return typeTogether({ meaninglessKey });
}

bool UinputKeyboard::typeTogether(const std::vector<unsigned> &keys) {
    const std::lock_guard lock(m_mutex);
    if (!m_descriptor.isValid())
        return false;
    const bool isTyped = write(eventsOf(keys));
    // The kernel lifts all keys of a keyboard that goes.
    if (!isTyped)
        m_descriptor.reset();
    return isTyped;
}

/// All or nothing, because half a command would leave keys down.
bool UinputKeyboard::write(const std::vector<input_event> &events) const {
    const size_t size = events.size() * sizeof(input_event);
    ssize_t count = -1;
    do {
        count = ::write(m_descriptor.get(), events.data(), size);
    } while (count < 0 && errno == EINTR);
    return count == ssize_t(size);
}
