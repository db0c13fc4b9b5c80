#pragma once

#include <QString>

#include <optional>
#include <variant>

/// A stored setting.
using DefaultsValue = std::variant<bool, qint64, double, QString>;

/// The user's stored settings, by key. Missing keys are distinct from stored values. Main thread only.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The stored value; absent if the key is missing.
    virtual std::optional<DefaultsValue> object(const QString &key) const = 0;

    /// Stores the value. Write errors are not reported; the next write tries again.
    virtual void set(const QString &key, const DefaultsValue &value) = 0;

    /// Removes the key.
    virtual void removeObject(const QString &key) = 0;

    /// Waits until all changes have been written.
    virtual void flush() = 0;

    /// The value as a string; absent if it is missing or of another type.
    std::optional<QString> string(const QString &key) const;
    /// The value as a double; integers are converted.
    std::optional<double> doubleValue(const QString &key) const;
    /// The value as an integer; integral doubles are converted.
    std::optional<qint64> integer(const QString &key) const;
    /// The value as a bool; the numbers 0 and 1 are converted.
    std::optional<bool> boolean(const QString &key) const;
};
