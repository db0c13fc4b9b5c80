#pragma once

#include <QString>

/// How this desktop does one of the operations that a dictation needs; in English.
struct OperationMethod {
    /// The operation: "key", "paste", "clipboard", "overlay", "microphone"...
    QString operation;
    /// The way that was chosen for it.
    QString method;
    /// Whether it works now.
    bool isAvailable = true;
    /// Why it does not, or why no better way was chosen; may be empty.
    QString reason;

    friend bool operator==(const OperationMethod &, const OperationMethod &) = default;
};
