#include "KeyboardAccess/KeyboardAccess.h"

#include "KeyboardAccess/KeyboardRule.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {
using Failure = KeyboardAccess::Failure;

constexpr const char *ruleName = "70-tolmi.rules";
constexpr const char *rulePath = "/etc/udev/rules.d/70-tolmi.rules";
/// With this every version of the rule begins.
constexpr std::string_view mark = "# Tolmi:";
constexpr const char *accessList = "system.posix_acl_access";

class Descriptor {
public:
    explicit Descriptor(int descriptor)
        : m_descriptor(descriptor) { }
    ~Descriptor() {
        if (isValid())
            ::close(m_descriptor);
    }
    Descriptor(Descriptor &&other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1)) { }
    Descriptor &operator=(Descriptor &&other) noexcept {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }

    int get() const { return m_descriptor; }
    bool isValid() const { return m_descriptor >= 0; }

private:
    int m_descriptor;
};

[[noreturn]] void fail(const std::string &what) {
    throw Failure(what + ": " + std::strerror(errno));
}

struct stat statusOf(const Descriptor &file, const std::string &name) {
    struct stat status { };
    if (::fstat(file.get(), &status) != 0)
        fail(name);
    return status;
}

Descriptor openFolder(int parent, const char *name) {
    return Descriptor(::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

/// Opens a folder step by step, each without following a link. Nothing if there is none.
std::optional<Descriptor> openTrusted(
    const KeyboardAccess::Machine &machine, const std::vector<const char *> &steps) {
    Descriptor folder(::open(machine.root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    std::string path;
    for (const char *step : steps) {
        path += std::string("/") + step;
        folder = openFolder(folder.get(), step);
        if (!folder.isValid() && errno == ENOENT)
            return {};
        if (!folder.isValid())
            fail(path);
        const struct stat status = statusOf(folder, path);
        if (status.st_uid != machine.owner || status.st_mode & (S_IWGRP | S_IWOTH))
            throw Failure(path + ": others than the administrator may write here");
    }
    return folder;
}

std::optional<Descriptor> openRules(const KeyboardAccess::Machine &machine) {
    return openTrusted(machine, { "etc", "udev", "rules.d" });
}

std::string readAll(const Descriptor &file) {
    // Larger than any rule of ours, so that a foreign file is not read to its end.
    constexpr size_t most = 1 << 16;
    std::string text;
    std::array<char, 4096> part;
    while (text.size() < most) {
        const ssize_t count = ::read(file.get(), part.data(), part.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            fail(rulePath);
        if (count == 0)
            break;
        text.append(part.data(), size_t(count));
    }
    return text;
}

/// The text of the rule that is there, if any. Something else under its name is a failure.
std::optional<std::string> presentRule(const Descriptor &rules) {
    const Descriptor file(::openat(rules.get(), ruleName, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file.isValid() && errno == ENOENT)
        return {};
    if (!file.isValid())
        fail(rulePath);
    if (!S_ISREG(statusOf(file, rulePath).st_mode))
        throw Failure(std::string(rulePath) + ": not a file");
    std::string text = readAll(file);
    if (!text.starts_with(mark))
        throw Failure(std::string(rulePath) + ": not made by Tolmi");
    return text;
}

/// A file beside the rule that is not read by udev, and that goes unless it takes the place of the rule.
class NewFile {
public:
    explicit NewFile(const Descriptor &folder)
        : m_folder(folder)
        , m_name(std::string(".") + ruleName + "." + std::to_string(::getpid())) {
        // Left by a process of the same number that was killed.
        ::unlinkat(m_folder.get(), m_name.c_str(), 0);
        m_file = Descriptor(::openat(m_folder.get(), m_name.c_str(),
            O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR));
        if (!m_file.isValid())
            fail(rulePath);
    }
    ~NewFile() {
        if (!m_isInPlace)
            ::unlinkat(m_folder.get(), m_name.c_str(), 0);
    }
    NewFile(const NewFile &) = delete;
    NewFile &operator=(const NewFile &) = delete;

    void write(std::string_view text) const {
        while (!text.empty()) {
            const ssize_t count = ::write(m_file.get(), text.data(), text.size());
            if (count < 0 && errno != EINTR)
                fail(rulePath);
            text.remove_prefix(size_t(std::max<ssize_t>(count, 0)));
        }
    }
    void takePlace() {
        constexpr mode_t readableByAll = S_IRUSR | S_IWUSR | S_IRGRP | S_IROTH;
        if (::fchmod(m_file.get(), readableByAll) != 0 || ::fsync(m_file.get()) != 0
            || ::renameat(m_folder.get(), m_name.c_str(), m_folder.get(), ruleName) != 0)
            fail(rulePath);
        m_isInPlace = true;
        ::fsync(m_folder.get());
    }

private:
    const Descriptor &m_folder;
    std::string m_name;
    Descriptor m_file { -1 };
    bool m_isInPlace = false;
};

/// The access list of a file as the kernel stores it.
struct AccessListEntry {
    uint16_t tag;
    uint16_t permissions;
    uint32_t id;
};

/// What the group of the file may do by its access list.
std::optional<mode_t> groupPermissions(const char *path) {
    constexpr size_t headSize = sizeof(uint32_t);
    constexpr uint16_t owningGroup = 4;
    constexpr int groupShift = 3;
    std::array<char, headSize + 256 * sizeof(AccessListEntry)> list {};
    const ssize_t size = ::getxattr(path, accessList, list.data(), list.size());
    for (size_t at = headSize; size > 0 && at + sizeof(AccessListEntry) <= size_t(size);
         at += sizeof(AccessListEntry)) {
        AccessListEntry entry {};
        std::memcpy(&entry, list.data() + at, sizeof entry);
        if (entry.tag == owningGroup)
            return mode_t(entry.permissions << groupShift) & S_IRWXG;
    }
    return {};
}

/// Takes from a device what single users may do beyond its mode.
void withdrawAccessList(const Descriptor &folder, const char *name) {
    const Descriptor device(::openat(folder.get(), name, O_PATH | O_NOFOLLOW | O_CLOEXEC));
    struct stat status { };
    if (!device.isValid() || ::fstat(device.get(), &status) != 0 || S_ISLNK(status.st_mode)
        || S_ISDIR(status.st_mode))
        return;
    // Of a file that is open as a path only, this is its one name that nobody can exchange.
    const std::string path = "/proc/self/fd/" + std::to_string(device.get());
    const std::optional<mode_t> group = groupPermissions(path.c_str());
    // With a list, the group's bits of the mode are the most that anybody may do by it.
    if (group && ::removexattr(path.c_str(), accessList) == 0)
        ::chmod(path.c_str(), (status.st_mode & 07777 & ~mode_t(S_IRWXG)) | *group);
}
} // namespace

KeyboardAccess::KeyboardAccess(Machine machine)
    : m_machine(std::move(machine)) { }

KeyboardAccess::State KeyboardAccess::state() const {
    const std::optional<Descriptor> rules = openRules(m_machine);
    if (!rules)
        return State::NotInstalled;
    const std::optional<std::string> present = presentRule(*rules);
    if (!present)
        return State::NotInstalled;
    return *present == keyboardRule ? State::Installed : State::Outdated;
}

void KeyboardAccess::install() const {
    const std::optional<Descriptor> rules = openRules(m_machine);
    if (!rules)
        throw Failure("There is no folder /etc/udev/rules.d on this system.");
    presentRule(*rules);
    NewFile file(*rules);
    file.write(keyboardRule);
    file.takePlace();
    // Built in or missing; then the right to read keyboards is of use all the same.
    m_machine.run("modprobe", { "uinput" });
    applyRules();
}

void KeyboardAccess::remove() const {
    const std::optional<Descriptor> rules = openRules(m_machine);
    if (rules && presentRule(*rules)) {
        if (::unlinkat(rules->get(), ruleName, 0) != 0)
            fail(rulePath);
        ::fsync(rules->get());
    }
    // In this order, so that devices which other rules give to the user are given again.
    withdrawFromDevices();
    applyRules();
}

/// Has udev read the rules and go through the devices that they concern.
void KeyboardAccess::applyRules() const {
    if (m_machine.run("udevadm", { "control", "--reload" }) != 0
        || m_machine.run("udevadm",
               { "trigger", "--action=change", "--subsystem-match=input", "--subsystem-match=misc",
                   "--sysname-match=event*", "--sysname-match=uinput" })
            != 0)
        throw Failure("The change takes effect only when the computer is started again: udevadm failed.");
}

void KeyboardAccess::withdrawFromDevices() const {
    if (const auto devices = openTrusted(m_machine, { "dev" }))
        withdrawAccessList(*devices, "uinput");
    const auto inputs = openTrusted(m_machine, { "dev", "input" });
    if (!inputs)
        return;
    const std::unique_ptr<DIR, int (*)(DIR *)> listing(::fdopendir(::dup(inputs->get())), &::closedir);
    while (const dirent *entry = listing ? ::readdir(listing.get()) : nullptr) {
        if (std::string_view(entry->d_name).starts_with("event"))
            withdrawAccessList(*inputs, entry->d_name);
    }
}
