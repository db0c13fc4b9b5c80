#pragma once

#include <functional>
#include <memory>

/// The one place that chooses adapters: builds the program and owns all of it.
///
/// It lives as long as the process: a transcription pass cannot be stopped, and its thread may use any part
/// of this until the very end.
class Composition {
public:
    /// `programArgument` is the first command line argument as given; `quit` ends the program.
    Composition(const char *programArgument, std::function<void()> quit);
    ~Composition();

    /// Starts the program; false when it runs already, in which case the running one has been told.
    bool start();

    /// Leaves everything as the user should find it after the end: the settings written, the clipboard in the
    /// hands of the desktop's clipboard manager.
    void settle();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
