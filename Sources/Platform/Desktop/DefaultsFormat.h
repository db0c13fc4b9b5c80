#pragma once

#include "Platform/UserDefaults.h"

#include <QByteArray>

#include <map>

/// What a settings file says.
struct ParsedDefaults {
    std::map<QString, DefaultsValue> values;
    /// Whether `values` is all that the file says; false for a file that is no JSON object, which gives no
    /// values, and for one with lists, objects or nulls in it, which are left out.
    bool isComplete = false;
};

/// Reads the JSON object of a settings file. Whether a number is an integer or a double is told by its
/// spelling; of a key that stands twice the last value counts.
ParsedDefaults parsedDefaults(const QByteArray &json);

/// The JSON object that gives the same values when it is read, one line for each.
QByteArray jsonOfDefaults(const std::map<QString, DefaultsValue> &values);
