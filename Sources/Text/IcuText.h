#pragma once

#include <QString>

#include <unicode/unistr.h>

/// For this module's sources only; ICU types are not exposed elsewhere.
inline QString fromICU(const icu::UnicodeString &text) {
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}
