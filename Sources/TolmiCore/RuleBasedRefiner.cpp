#include "TolmiCore/RuleBasedRefiner.h"

#include "Text/RegularExpression.h"
#include "Text/Text.h"

#include <array>

namespace {
/// In order of application. Some words are removed only before a comma, because elsewhere they carry meaning.
const std::array<RegularExpression, 13> &fillerPatterns() {
    const auto pattern = [](const QString &text) {
        return RegularExpression(text, RegularExpression::Option::CaseInsensitive);
    };
    static const std::array<RegularExpression, 13> patterns {
        pattern(QStringLiteral(R"(\bdeci\b)")),
        pattern(QStringLiteral(R"(\bpăi\b)")),
        pattern(QStringLiteral(R"(\bpai\b)")),
        pattern(QStringLiteral(R"(\baaaa+\b)")),
        pattern(QStringLiteral(R"(\bmmm+\b)")),
        pattern(QStringLiteral(R"(\bîîî+\b)")),
        pattern(QStringLiteral(R"(\bnu știu\b)")),
        pattern(QStringLiteral(R"(\bum+\b)")),
        pattern(QStringLiteral(R"(\buh+\b)")),
        pattern(QStringLiteral(R"(\byou know\b)")),
        pattern(QStringLiteral(R"(\blike\b(?=\s*,))")),
        pattern(QStringLiteral(R"(\bbasically\b(?=\s*,))")),
        pattern(QStringLiteral(R"(\bactually\b(?=\s*,))")),
    };
    return patterns;
}

// From the last match to the first, since an upper-case letter may be longer than the lower-case one.
QString capitalizeAfterPunctuation(QString text) {
    static const RegularExpression sentenceStart(QStringLiteral(R"(([.!?])\s+([a-zăâîșț]))"));
    const auto matches = sentenceStart.matches(text);
    for (auto match = matches.rbegin(); match != matches.rend(); ++match) {
        const RegularExpression::Range letter = (*match)[2];
        text.replace(letter.start, letter.length, Text::upperCased(text.mid(letter.start, letter.length)));
    }
    return text;
}

QString refined(QString text) {
    static const RegularExpression whiteSpaceRun(QStringLiteral(R"(\s{2,})"));
    static const RegularExpression doubleComma(QStringLiteral(R"(,\s*,)"));
    for (const RegularExpression &pattern : fillerPatterns())
        text = pattern.replacingMatches(text, {});
    text = whiteSpaceRun.replacingMatches(text, QStringLiteral(" "));
    text = doubleComma.replacingMatches(text, QStringLiteral(","));
    return Text::trimmed(capitalizeAfterPunctuation(text));
}
} // namespace

Task<QString> RuleBasedRefiner::refine(QString text) {
    co_return refined(text);
}
