#include "Platform/UserDefaults.h"

#include <cmath>

std::optional<QString> UserDefaults::string(const QString &key) const {
    const auto value = object(key);
    const auto *text = value ? std::get_if<QString>(&*value) : nullptr;
    return text ? std::optional(*text) : std::nullopt;
}

std::optional<double> UserDefaults::doubleValue(const QString &key) const {
    const auto value = object(key);
    if (!value)
        return std::nullopt;
    if (const auto *number = std::get_if<double>(&*value))
        return *number;
    if (const auto *number = std::get_if<qint64>(&*value))
        return double(*number);
    return std::nullopt;
}

std::optional<qint64> UserDefaults::integer(const QString &key) const {
    const auto value = object(key);
    if (!value)
        return std::nullopt;
    if (const auto *number = std::get_if<qint64>(&*value))
        return *number;
    const auto *number = std::get_if<double>(&*value);
    constexpr double limit = 9223372036854775808.0; // 2^63, the first double out of range
    if (number && std::trunc(*number) == *number && *number >= -limit && *number < limit)
        return qint64(*number);
    return std::nullopt;
}

std::optional<bool> UserDefaults::boolean(const QString &key) const {
    const auto value = object(key);
    if (!value)
        return std::nullopt;
    if (const auto *truth = std::get_if<bool>(&*value))
        return *truth;
    const auto number = doubleValue(key);
    return number && (*number == 0 || *number == 1) ? std::optional(*number == 1) : std::nullopt;
}
