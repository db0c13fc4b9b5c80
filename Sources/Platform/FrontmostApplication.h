#pragma once

#include <QString>

#include <optional>

/// The application that has the focus.
struct FrontApplication {
    std::optional<QString> localizedName;
    std::optional<QString> bundleIdentifier;
    /// Whether what is pasted there is typed into a command line.
    bool isTerminal = false;

    friend bool operator==(const FrontApplication &, const FrontApplication &) = default;
};

/// Tells which application has the focus.
class FrontmostApplication {
public:
    virtual ~FrontmostApplication() = default;

    /// The application in front now; absent when nothing has the focus or it cannot be told.
    virtual std::optional<FrontApplication> current() = 0;
};
