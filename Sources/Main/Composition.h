#pragma once

#include <functional>
#include <memory>

/// The one place that chooses adapters: builds the program and owns all of it.
///
/// It lives as long as the process: a transcription pass cannot be stopped, and its thread may use any part
/// of this until the very end.
class Composition {
public:
    /// How the program was started and how it is ended.
    struct LaunchOptions {
        /// The first command line argument as given.
        const char *programArgument;
        /// The umask that the user's own files follow; the program's own is stricter.
        unsigned usersMask;
        /// Ends the program.
        std::function<void()> quit;
    };

    explicit Composition(LaunchOptions launch);
    ~Composition();

    /// Starts the program; false when it runs already, in which case the running one has been told.
    bool start();

    /// Leaves everything as the user should find it after the end: whisper-cli ended, settings and history
    /// written, the clipboard in the hands of the desktop's clipboard manager. Takes as long as the disk
    /// does.
    void settle();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
