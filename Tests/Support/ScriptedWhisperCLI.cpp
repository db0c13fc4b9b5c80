// A stand-in for whisper-cli that does what its model file says, line by line:
//
//   print stdout|stderr TEXT   prints the text
//   flood stdout|stderr COUNT  prints so many bytes
//   transcript TEXT            writes the text into the output file; "\n" and "\xHH" stand for bytes
//   append TEXT                writes more of it
//   report                     writes arguments, descriptors, signals and folder into MODEL.report
//   hold-termination           does not end by the termination signal from here on
//   await-termination          waits for that signal, after hold-termination
//   leave-child                leaves a child behind that keeps the pipes open; its id goes into MODEL.child
//   ready                      creates MODEL.ready
//   sleep MILLISECONDS         waits
//   wait                       waits for ever
//   die SIGNAL                 ends by the signal of this number
//   exit CODE                  ends with the code; the end of the script is an exit with 0

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

namespace {
struct Call {
    std::vector<std::string> arguments;

    std::string valueOf(const std::string &option) const {
        for (size_t index = 0; index + 1 < arguments.size(); ++index) {
            if (arguments[index] == option)
                return arguments[index + 1];
        }
        std::cerr << "no " << option << '\n';
        std::exit(90);
    }
    std::string model() const { return valueOf("-m"); }
    std::string output() const { return valueOf("-of") + ".txt"; }
};

std::string unescaped(const std::string &text) {
    std::string bytes;
    for (size_t index = 0; index < text.size(); ++index) {
        if (text.compare(index, 2, "\\n") == 0) {
            bytes += '\n';
            index += 1;
        } else if (text.compare(index, 2, "\\x") == 0) {
            bytes += char(std::stoi(text.substr(index + 2, 2), nullptr, 16));
            index += 3;
        } else {
            bytes += text[index];
        }
    }
    return bytes;
}

void writeAll(int descriptor, const std::string &bytes) {
    for (size_t done = 0; done < bytes.size();) {
        const ssize_t count = ::write(descriptor, bytes.data() + done, bytes.size() - done);
        if (count < 0)
            std::exit(91);
        done += size_t(count);
    }
}

void writeFile(const std::string &path, const std::string &bytes, std::ios::openmode mode) {
    std::ofstream(path, std::ios::binary | mode) << bytes;
}

std::string target(const std::string &link) {
    std::string path(4096, '\0');
    const ssize_t length = ::readlink(link.c_str(), path.data(), path.size());
    return path.substr(0, size_t(length > 0 ? length : 0));
}

/// The lines on blocked and ignored signals, all zero for a program as a shell starts it.
std::string signalLines() {
    std::ifstream status("/proc/self/status");
    std::string lines;
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("SigBlk") || line.starts_with("SigIgn"))
            lines += line + '\n';
    }
    return lines;
}

std::string report(const Call &call) {
    std::ostringstream text;
    for (const std::string &argument : call.arguments)
        text << "argument: " << argument << '\n';
    text << "descriptors:";
    for (int descriptor = 0; descriptor < 4096; ++descriptor) {
        if (::fcntl(descriptor, F_GETFD) >= 0)
            text << ' ' << descriptor;
    }
    const char *variable = std::getenv("TOLMI_TEST_VARIABLE");
    text << '\n' << signalLines();
    text << "input: " << target("/proc/self/fd/0") << '\n';
    text << "folder: " << target("/proc/self/cwd") << '\n';
    text << "variable: " << (variable ? variable : "") << '\n';
    return text.str();
}

[[noreturn]] void waitForEver() {
    for (;;)
        ::pause();
}

sigset_t terminationSet() {
    sigset_t set;
    ::sigemptyset(&set);
    ::sigaddset(&set, SIGTERM);
    return set;
}

void leaveChild(const Call &call) {
    const pid_t child = ::fork();
    if (child == 0)
        waitForEver();
    writeFile(call.model() + ".child", std::to_string(child), std::ios::trunc);
}

int stream(std::istream &line) {
    std::string name;
    line >> name;
    return name == "stdout" ? STDOUT_FILENO : STDERR_FILENO;
}

std::string rest(std::istream &line) {
    std::string text;
    line.ignore(1);
    std::getline(line, text);
    return unescaped(text);
}

int number(std::istream &line) {
    int value = 0;
    line >> value;
    return value;
}

void execute(const Call &call, const std::string &command, std::istream &line) {
    if (command == "print") {
        const int descriptor = stream(line);
        writeAll(descriptor, rest(line));
    } else if (command == "flood") {
        const int descriptor = stream(line);
        writeAll(descriptor, std::string(size_t(number(line)), 'x'));
    } else if (command == "transcript") {
        writeFile(call.output(), rest(line), std::ios::trunc);
    } else if (command == "append") {
        writeFile(call.output(), rest(line), std::ios::app);
    } else if (command == "report") {
        writeFile(call.model() + ".report", report(call), std::ios::trunc);
    } else if (command == "hold-termination") {
        const sigset_t set = terminationSet();
        ::sigprocmask(SIG_BLOCK, &set, nullptr);
    } else if (command == "await-termination") {
        const sigset_t set = terminationSet();
        int signal = 0;
        ::sigwait(&set, &signal);
    } else if (command == "leave-child") {
        leaveChild(call);
    } else if (command == "ready") {
        writeFile(call.model() + ".ready", "", std::ios::trunc);
    } else if (command == "sleep") {
        std::this_thread::sleep_for(std::chrono::milliseconds(number(line)));
    } else if (command == "wait") {
        waitForEver();
    } else if (command == "die") {
        std::raise(number(line));
    } else if (command == "exit") {
        ::_exit(number(line));
    } else {
        std::cerr << "unknown command " << command << '\n';
        std::exit(92);
    }
}
} // namespace

int main(int argc, char **argv) {
    const Call call { { argv + 1, argv + argc } };
    // Read whole first, so that the report finds no descriptor of the script's.
    std::stringstream script;
    script << std::ifstream(call.model()).rdbuf();
    for (std::string text; std::getline(script, text);) {
        std::istringstream line(text);
        std::string command;
        line >> command;
        execute(call, command, line);
    }
    return 0;
}
