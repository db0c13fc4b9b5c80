#pragma once

#include <QString>

#include <ostream>

// How failed expectations show values of Qt. GoogleTest finds these by the namespace of the type.

inline void PrintTo(const QString &text, std::ostream *stream) {
    *stream << '"' << text.toStdString() << '"';
}
