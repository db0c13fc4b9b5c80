#pragma once

#include <QString>

/// The name of a user who has given none. It is stored, and English whatever the interface language.
inline const QString defaultProfileDisplayName = QStringLiteral("User");

/// `name` as the profile keeps it: one line of at most 40 characters with single blanks between its words;
/// the default name for a blank one.
QString sanitizedProfileDisplayName(const QString &name);
