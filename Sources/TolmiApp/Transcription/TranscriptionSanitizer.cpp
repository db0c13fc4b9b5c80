#include "TolmiApp/Transcription/TranscriptionSanitizer.h"

#include "Text/RegularExpression.h"
#include "Text/Text.h"

#include <QSet>

namespace {
/// A recording with a lower peak is silent.
constexpr double silencePeak = 0.06;

const QSet<QString> &silenceHallucinations() {
    static const QSet<QString> phrases {
        QStringLiteral("thank you"),
        QStringLiteral("thanks for watching"),
    };
    return phrases;
}

QString normalize(const QString &text) {
    static const RegularExpression other(QStringLiteral(R"([^a-z0-9\s])"));
    static const RegularExpression whiteSpace(QStringLiteral(R"(\s+)"));
    const QString blank = QStringLiteral(" ");
    const QString words = other.replacingMatches(Text::lowerCased(text), blank);
    return Text::trimmed(whiteSpace.replacingMatches(words, blank));
}
} // namespace

QString TranscriptionSanitizer::sanitize(const QString &text, double peakLevel) {
    const QString trimmed = Text::trimmed(text);
    if (peakLevel < silencePeak && silenceHallucinations().contains(normalize(trimmed)))
        return {};
    return trimmed;
}
