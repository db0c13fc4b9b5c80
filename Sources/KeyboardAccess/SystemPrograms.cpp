#include "KeyboardAccess/SystemPrograms.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {
constexpr std::array folders { "/usr/sbin/", "/usr/bin/", "/sbin/", "/bin/" };

std::string pathOf(const std::string &name) {
    for (const char *folder : folders) {
        if (const std::string path = folder + name; ::access(path.c_str(), X_OK) == 0)
            return path;
    }
    return {};
}

/// What the program gets for its standard streams and its signals.
class Surroundings {
public:
    Surroundings() {
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawn_file_actions_init(&m_files);
        ::posix_spawn_file_actions_addopen(&m_files, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        ::posix_spawn_file_actions_addopen(&m_files, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        ::posix_spawn_file_actions_addclosefrom_np(&m_files, STDERR_FILENO + 1);
        ::posix_spawnattr_init(&m_attributes);
        ::posix_spawnattr_setsigmask(&m_attributes, &none);
        ::posix_spawnattr_setsigdefault(&m_attributes, &all);
        ::posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~Surroundings() {
        ::posix_spawn_file_actions_destroy(&m_files);
        ::posix_spawnattr_destroy(&m_attributes);
    }
    Surroundings(const Surroundings &) = delete;
    Surroundings &operator=(const Surroundings &) = delete;

    const posix_spawn_file_actions_t *files() const { return &m_files; }
    const posix_spawnattr_t *attributes() const { return &m_attributes; }

private:
    posix_spawn_file_actions_t m_files;
    posix_spawnattr_t m_attributes;
};

int exitStatus(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0) {
        if (errno != EINTR)
            return -1;
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
} // namespace

int SystemPrograms::run(const std::string &name, const std::vector<std::string> &arguments) {
    std::string path = pathOf(name);
    std::vector<std::string> words { path };
    words.insert(words.end(), arguments.begin(), arguments.end());
    // With the null at its end.
    std::vector<char *> vector(words.size() + 1);
    std::ranges::transform(words, vector.begin(), [](std::string &word) { return word.data(); });
    std::string searchPath = "PATH=/usr/sbin:/usr/bin:/sbin:/bin";
    std::string language = "LC_ALL=C";
    const std::array<char *, 3> environment { searchPath.data(), language.data(), nullptr };
    const Surroundings surroundings;
    pid_t child = -1;
    if (::posix_spawn(&child, path.c_str(), surroundings.files(), surroundings.attributes(), vector.data(),
            environment.data())
        != 0)
        return -1;
    return exitStatus(child);
}
