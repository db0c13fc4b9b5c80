#pragma once

#include <QString>

#include <optional>

/// The application that has the focus.
struct FrontApplication {
    std::optional<QString> localizedName;
    std::optional<QString> bundleIdentifier;
    /// Whether text pasted there goes to a command line.
    bool isTerminal = false;

    friend bool operator==(const FrontApplication &, const FrontApplication &) = default;
};

/// Reports which application has the focus.
class FrontmostApplication {
public:
    virtual ~FrontmostApplication() = default;

    /// The frontmost application; absent if nothing has the focus or it is unknown.
    virtual std::optional<FrontApplication> current() = 0;
};
