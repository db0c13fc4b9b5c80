#include "TolmiApp/ProfileReadinessScorer.h"

#include "Text/Text.h"

bool ProfileReadinessScorer::isPersonalizedDisplayName(const QString &name) {
    const QString trimmed = Text::trimmed(name);
    return !trimmed.isEmpty() && trimmed.compare(QStringLiteral("User"), Qt::CaseInsensitive) != 0;
}
