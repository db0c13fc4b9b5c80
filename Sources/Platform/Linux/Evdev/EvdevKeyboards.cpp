#include "Platform/Linux/Evdev/EvdevKeyboards.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <cstring>

#include <poll.h>
#include <sys/inotify.h>

namespace {
constexpr uint32_t comesAndGoes
    = IN_CREATE | IN_MOVED_TO | IN_ATTRIB | IN_DELETE | IN_MOVED_FROM | IN_ONLYDIR;
constexpr uint32_t comes = IN_CREATE | IN_MOVED_TO;
/// What arrives beyond it is read in the next round.
constexpr int readsPerRound = 16;

QByteArray upToLastSlash(const QByteArray &path) {
    return path.left(path.lastIndexOf('/'));
}

QByteArray afterLastSlash(const QByteArray &path) {
    return path.mid(path.lastIndexOf('/') + 1);
}

bool isDeviceName(const QByteArray &name) {
    constexpr qsizetype prefixLength = 5;
    return name.size() > prefixLength && name.startsWith("event")
        && std::all_of(name.begin() + prefixLength, name.end(), [](char c) { return c >= '0' && c <= '9'; });
}
} // namespace

EvdevKeyboards::EvdevKeyboards(QByteArray folder, std::shared_ptr<DeviceControl> control)
    : m_folder(std::move(folder))
    , m_control(std::move(control))
    , m_watch(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
    // The kernel removes the folder together with its last device.
    ::inotify_add_watch(m_watch.get(), upToLastSlash(m_folder).constData(), comes | IN_ONLYDIR);
    watchFolder();
}

QByteArrayList EvdevKeyboards::deviceNames(const QByteArray &folder) {
    const QStringList entries = QDir(QFile::decodeName(folder)).entryList(QDir::System | QDir::Files);
    QByteArrayList names;
    for (const QString &entry : entries) {
        if (const QByteArray name = QFile::encodeName(entry); isDeviceName(name))
            names.append(name);
    }
    return names;
}

void EvdevKeyboards::watchFolder() {
    m_folderWatch = ::inotify_add_watch(m_watch.get(), m_folder.constData(), comesAndGoes);
}

void EvdevKeyboards::openAll() {
    std::vector<KeyChange> ignored;
    refreshAll(ignored, 0);
}

std::vector<pollfd> EvdevKeyboards::awaited() const {
    std::vector<pollfd> all { { m_watch.get(), POLLIN, 0 } };
    for (const auto &[name, keyboard] : m_keyboards)
        all.push_back({ keyboard->descriptor(), POLLIN, 0 });
    return all;
}

void EvdevKeyboards::read(std::vector<KeyChange> &changes, double now) {
    const size_t erased = std::erase_if(
        m_keyboards, [&changes, now](const auto &entry) { return !entry.second->read(changes, now); });
    m_hasChanged = m_hasChanged || erased > 0;
    // After the keys, so that what a keyboard still said before it went is heard.
    readWatch(changes, now);
}

void EvdevKeyboards::readWatch(std::vector<KeyChange> &changes, double now) {
    alignas(inotify_event) std::array<char, 4096> bytes;
    for (int round = 0; round < readsPerRound; ++round) {
        const ssize_t count = ::read(m_watch.get(), bytes.data(), bytes.size());
        if (count <= 0)
            return;
        for (ssize_t at = 0; at < count;) {
            const auto &event = *reinterpret_cast<const inotify_event *>(bytes.data() + at);
            folderChanged(event, changes, now);
            at += ssize_t(sizeof(inotify_event) + event.len);
        }
    }
}

void EvdevKeyboards::folderChanged(const inotify_event &event, std::vector<KeyChange> &changes, double now) {
    const QByteArray name(event.len > 0 ? event.name : "");
    if (m_folderWatch >= 0 && event.wd == m_folderWatch) {
        if (event.mask & IN_IGNORED)
            m_folderWatch = -1;
        else if (isDeviceName(name))
            refresh(name, changes, now);
    } else if (event.mask & IN_Q_OVERFLOW || (event.mask & comes && name == afterLastSlash(m_folder))) {
        watchFolder();
        refreshAll(changes, now);
    }
}

void EvdevKeyboards::refreshAll(std::vector<KeyChange> &changes, double now) {
    QByteArrayList names = deviceNames(m_folder);
    for (const auto &[name, keyboard] : m_keyboards) {
        if (!names.contains(name))
            names.append(name);
    }
    for (const QByteArray &name : names)
        refresh(name, changes, now);
}

/// Opens a node once more, since who may read it has perhaps changed: a user who has left the seat keeps no
/// keyboard.
void EvdevKeyboards::refresh(const QByteArray &name, std::vector<KeyChange> &changes, double now) {
    const auto [kind, keyboard] = EvdevKeyboard::open(m_folder + '/' + name, m_control);
    const auto known = m_keyboards.find(name);
    if (keyboard && known != m_keyboards.end() && known->second->isSameNode(*keyboard))
        return;
    drop(name, changes, now);
    if (!keyboard)
        return;
    m_keyboards.emplace(name, keyboard);
    m_hasChanged = true;
}

void EvdevKeyboards::drop(const QByteArray &name, std::vector<KeyChange> &changes, double now) {
    const auto known = m_keyboards.find(name);
    if (known == m_keyboards.end())
        return;
    known->second->releaseAll(changes, now);
    m_keyboards.erase(known);
    m_hasChanged = true;
}

int EvdevKeyboards::heldCount(unsigned code) const {
    return int(std::ranges::count_if(
        m_keyboards, [code](const auto &entry) { return entry.second->heldKeys().test(code); }));
}
