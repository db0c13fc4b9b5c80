#pragma once

#include <functional>
#include <memory>

/// The one place that chooses adapters: builds the program and owns all of it for the life of the process.
class Composition {
public:
    /// `programArgument` is the first command line argument as given; `quit` ends the program. The
    /// application object exists before and after this.
    Composition(const char *programArgument, std::function<void()> quit);
    ~Composition();

    /// Starts the program; false when it runs already, in which case the running one has been told.
    bool start();

private:
    struct Parts;
    std::unique_ptr<Parts> m_parts;
};
