#pragma once

#include <QString>

#include <optional>
#include <variant>

/// A stored setting.
using DefaultsValue = std::variant<bool, qint64, double, QString>;

/// The user's stored settings, by key. It tells a missing key from a stored value. Main thread only.
class UserDefaults {
public:
    virtual ~UserDefaults() = default;

    /// The stored value; absent when the key is missing.
    virtual std::optional<DefaultsValue> object(const QString &key) const = 0;

    /// Stores the value; a failure to write is dropped and the next write tries again.
    virtual void set(const QString &key, const DefaultsValue &value) = 0;

    /// Forgets the key.
    virtual void removeObject(const QString &key) = 0;

    /// Waits until everything that was set has been written.
    virtual void flush() = 0;

    /// The value as a text; absent when it is missing or of another type.
    std::optional<QString> string(const QString &key) const;
    /// The value as a number; an integer counts too.
    std::optional<double> doubleValue(const QString &key) const;
    /// The value as an integer; an integral double counts too.
    std::optional<qint64> integer(const QString &key) const;
    /// The value as a truth value; the numbers 0 and 1 count too.
    std::optional<bool> boolean(const QString &key) const;
};
