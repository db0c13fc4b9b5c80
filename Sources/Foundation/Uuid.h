#pragma once

#include <QString>
#include <QUuid>

/// An id as it is stored and shown: upper case, without braces.
inline QString uuidString(const QUuid &id) {
    return id.toString(QUuid::WithoutBraces).toUpper();
}
