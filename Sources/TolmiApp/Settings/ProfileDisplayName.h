#pragma once

#include <QString>

/// The default name. It is stored, and English in every interface language.
inline const QString defaultProfileDisplayName = QStringLiteral("User");

/// `name` as stored in the profile: one line of at most 40 characters with single spaces between words; the
/// default name if blank.
QString sanitizedProfileDisplayName(const QString &name);
