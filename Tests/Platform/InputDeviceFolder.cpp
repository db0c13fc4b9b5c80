#include "Platform/InputDeviceFolder.h"

#include "Support/UntilTrue.h"

#include <QFile>

#include <gtest/gtest.h>

#include <chrono>
#include <climits>
#include <cmath>
#include <cstring>

#include <fcntl.h>
#include <sys/fsuid.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {
void fillBits(const std::bitset<KEY_CNT> &bits, quintptr answer) {
    std::array<unsigned long, KEY_CNT / CHAR_BIT / sizeof(unsigned long)> words {};
    constexpr size_t wordBits = sizeof(unsigned long) * CHAR_BIT;
    for (size_t bit = 0; bit < bits.size(); ++bit)
        words[bit / wordBits] |= (unsigned long)bits[bit] << (bit % wordBits);
    std::memcpy(reinterpret_cast<void *>(answer), words.data(), sizeof words);
}

quint64 inodeOf(int descriptor) {
    struct stat status { };
    EXPECT_EQ(::fstat(descriptor, &status), 0);
    return status.st_ino;
}
} // namespace

InputDevice::Description InputDevice::keyboard() {
    Description description;
    for (unsigned key = KEY_ESC; key <= KEY_COMPOSE; ++key)
        description.keys.set(key);
    return description;
}

InputDevice::InputDevice(QByteArray path, Description description)
    : m_path(std::move(path))
    , m_description(std::move(description)) {
    EXPECT_EQ(::mkfifo(m_path.constData(), 0600), 0);
    // Reading as well, so that it opens before there is a reader.
    m_writer.reset(::open(m_path.constData(), O_RDWR | O_CLOEXEC));
    EXPECT_TRUE(m_writer.isValid());
    m_inode = inodeOf(m_writer.get());
}

double InputDevice::steadySeconds() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

QByteArray InputDevice::bytesOf(unsigned type, unsigned code, int value, double time) {
    input_event event {};
    const qint64 microseconds = std::llround(time * 1e6);
    event.input_event_sec = microseconds / 1000000;
    event.input_event_usec = microseconds % 1000000;
    event.type = quint16(type);
    event.code = quint16(code);
    event.value = value;
    return { reinterpret_cast<const char *>(&event), sizeof event };
}

void InputDevice::sendBytes(const QByteArray &bytes) {
    EXPECT_EQ(::write(m_writer.get(), bytes.constData(), size_t(bytes.size())), bytes.size());
}

bool InputDevice::waitUntilRead() const {
    return untilTrue([this] {
        int unread = -1;
        return ::ioctl(m_writer.get(), FIONREAD, &unread) == 0 && unread == 0;
    });
}

void InputDevice::sendEvent(unsigned type, unsigned code, int value, double time) {
    sendBytes(bytesOf(type, code, value, time));
}

void InputDevice::send(unsigned code, int value, double time) {
    constexpr int repeat = 2;
    if (value != repeat)
        setHeld(code, value != 0);
    sendBytes(bytesOf(EV_MSC, MSC_SCAN, int(code), time) + bytesOf(EV_KEY, code, value, time)
        + bytesOf(EV_SYN, SYN_REPORT, 0, time));
}

void InputDevice::send(unsigned code, int value) {
    send(code, value, steadySeconds());
}

void InputDevice::type(unsigned code) {
    press(code);
    release(code);
}

void InputDevice::setHeld(unsigned code, bool isHeld) {
    const std::lock_guard lock(m_mutex);
    m_held.set(code, isHeld);
}

void InputDevice::unplug() {
    EXPECT_EQ(::unlink(m_path.constData()), 0);
    hangUp();
}

void InputDevice::setMode(unsigned mode) {
    EXPECT_EQ(::chmod(m_path.constData(), mode), 0);
}

void InputDevice::moveTo(const QByteArray &path) {
    EXPECT_EQ(::rename(m_path.constData(), path.constData()), 0);
    m_path = path;
}

int InputDevice::stateCount() const {
    const std::lock_guard lock(m_mutex);
    return m_stateCount;
}

std::set<unsigned> InputDevice::requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

int InputDevice::answer(unsigned long code, quintptr argument) {
    const std::lock_guard lock(m_mutex);
    const unsigned size = _IOC_SIZE(code);
    m_requests.insert(_IOC_NR(code));
    if (code == EVIOCGBIT(EV_KEY, size)) {
        fillBits(m_description.keys, argument);
    } else if (code == EVIOCGKEY(size)) {
        ++m_stateCount;
        fillBits(m_held, argument);
    } else if (code == EVIOCGNAME(size)) {
        std::memcpy(reinterpret_cast<void *>(argument), m_description.name.constData(),
            std::min<size_t>(size, size_t(m_description.name.size()) + 1));
    } else if (code == EVIOCSCLOCKID && m_description.hasSteadyTimes) {
        EXPECT_EQ(*reinterpret_cast<const int *>(argument), CLOCK_MONOTONIC);
    } else {
        errno = EINVAL;
        return -1;
    }
    return 0;
}

/// Finds the device behind a descriptor by its node.
class InputDeviceFolder::Control final : public DeviceControl {
public:
    int request(int descriptor, unsigned long code, quintptr argument) override {
        const std::lock_guard lock(m_mutex);
        m_openFlags.insert(::fcntl(descriptor, F_GETFL) | (::fcntl(descriptor, F_GETFD) ? O_CLOEXEC : 0));
        const auto device = m_devices.find(inodeOf(descriptor));
        if (device != m_devices.end())
            return device->second->answer(code, argument);
        errno = ENOTTY;
        return -1;
    }
    void add(InputDevice &device) {
        const std::lock_guard lock(m_mutex);
        m_devices[device.inode()] = &device;
    }
    std::set<int> openFlags() const {
        const std::lock_guard lock(m_mutex);
        return m_openFlags;
    }

private:
    mutable std::mutex m_mutex;
    std::map<quint64, InputDevice *> m_devices;
    std::set<int> m_openFlags;
};

InputDeviceFolder::InputDeviceFolder()
    : m_path(QFile::encodeName(m_root.filePath(QStringLiteral("input"))))
    , m_control(std::make_shared<Control>()) {
    EXPECT_EQ(::chmod(QFile::encodeName(m_root.path()).constData(), 0755), 0);
    make();
}

std::shared_ptr<DeviceControl> InputDeviceFolder::control() const {
    return m_control;
}

std::set<int> InputDeviceFolder::openFlags() const {
    return m_control->openFlags();
}

void InputDeviceFolder::make() {
    EXPECT_EQ(::mkdir(m_path.constData(), 0755), 0);
    EXPECT_EQ(::chmod(m_path.constData(), 0755), 0);
}

void InputDeviceFolder::remove() {
    EXPECT_EQ(::rmdir(m_path.constData()), 0);
}

InputDevice &InputDeviceFolder::plug(
    const QByteArray &name, InputDevice::Description description, unsigned mode) {
    // Made elsewhere, so that it is complete when it appears.
    const QByteArray elsewhere = QFile::encodeName(m_root.filePath(QStringLiteral("made")));
    InputDevice &device
        = *m_devices.emplace_back(std::make_unique<InputDevice>(elsewhere, std::move(description)));
    device.setMode(mode);
    m_control->add(device);
    device.moveTo(m_path + '/' + name);
    return device;
}

Unprivileged::Unprivileged()
    : m_user(unsigned(::setfsuid(::geteuid()))) {
    constexpr uid_t nobody = 65534;
    if (::geteuid() == 0)
        ::setfsuid(nobody);
}

Unprivileged::~Unprivileged() {
    ::setfsuid(m_user);
}
