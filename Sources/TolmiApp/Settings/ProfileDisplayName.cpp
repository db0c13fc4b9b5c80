#include "TolmiApp/Settings/ProfileDisplayName.h"

#include "Text/RegularExpression.h"
#include "Text/Text.h"

QString sanitizedProfileDisplayName(const QString &name) {
    static const RegularExpression whiteSpace(QStringLiteral("\\s+"));
    const QString oneLine = whiteSpace.replacingMatches(Text::trimmed(name), QStringLiteral(" "));
    return oneLine.isEmpty() ? defaultProfileDisplayName : Text::firstCharacters(oneLine, 40);
}
