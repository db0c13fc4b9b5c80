#pragma once

#include <QString>

#include <unicode/unistr.h>

/// For the sources of this module only: nobody else sees a type of ICU.
inline QString fromICU(const icu::UnicodeString &text) {
    return QString(reinterpret_cast<const QChar *>(text.getBuffer()), text.length());
}
