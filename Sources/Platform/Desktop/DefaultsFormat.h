#pragma once

#include "Platform/UserDefaults.h"

#include <QByteArray>

#include <map>

/// The parsed content of a settings file.
struct ParsedDefaults {
    std::map<QString, DefaultsValue> values;
    /// Whether `values` holds everything in the file; false if the file is not a JSON object (no values
    /// then), or contains arrays, objects or nulls, which are skipped.
    bool isComplete = false;
};

/// Parses the JSON object of a settings file. A number's spelling decides between integer and double; the
/// last value of a duplicate key wins.
ParsedDefaults parsedDefaults(const QByteArray &json);

/// The values as a JSON object, one per line.
QByteArray jsonOfDefaults(const std::map<QString, DefaultsValue> &values);
