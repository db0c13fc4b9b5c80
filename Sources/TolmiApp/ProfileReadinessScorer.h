#pragma once

#include <QString>

/// Tells from plain facts how far a user has come in setting up.
namespace ProfileReadinessScorer {

/// Whether the user has given a name other than the default one, in any case.
bool isPersonalizedDisplayName(const QString &name);

} // namespace ProfileReadinessScorer
