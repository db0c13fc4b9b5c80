#include "Text/Text.h"

#include "Text/IcuText.h"

#include <QLocale>

#include <unicode/brkiter.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>

#include <cmath>

namespace {
bool isTrimmedAway(char32_t codePoint) {
    if ((codePoint >= 0x0A && codePoint <= 0x0D) || codePoint == 0x09 || codePoint == 0x85)
        return true;
    return (U_GET_GC_MASK(UChar32(codePoint)) & U_GC_Z_MASK) != 0;
}

bool isBlank(char32_t codePoint) {
    return codePoint == 0x09 || u_charType(UChar32(codePoint)) == U_SPACE_SEPARATOR;
}

icu::UnicodeString aliased(const QString &text) {
    return icu::UnicodeString(false, reinterpret_cast<const char16_t *>(text.utf16()), int32_t(text.size()));
}

std::unique_ptr<icu::BreakIterator> characterBreaks(const icu::UnicodeString &text) {
    UErrorCode status = U_ZERO_ERROR;
    std::unique_ptr<icu::BreakIterator> breaks(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status));
    breaks->setText(text);
    return breaks;
}

template <typename Predicate>
qint64 countCodePoints(const QString &text, Predicate predicate) {
    const icu::UnicodeString codeUnits = aliased(text);
    qint64 count = 0;
    for (int32_t index = 0; index < codeUnits.length(); index = codeUnits.moveIndex32(index, 1))
        count += predicate(codeUnits.char32At(index)) ? 1 : 0;
    return count;
}
} // namespace

namespace Text {

// All characters of the sets are in the BMP, so code units can be checked one by one.
QString trimmed(const QString &text) {
    qsizetype start = 0;
    qsizetype end = text.size();
    while (start < end && isTrimmedAway(text[start].unicode()))
        ++start;
    while (end > start && isTrimmedAway(text[end - 1].unicode()))
        --end;
    return text.mid(start, end - start);
}

QStringList pieces(const QString &text, Separators separators) {
    const auto isSeparator = separators == Separators::Blanks ? isBlank : isTrimmedAway;
    QStringList found;
    qsizetype start = 0;
    for (qsizetype index = 0; index <= text.size(); ++index) {
        if (index < text.size() && !isSeparator(text[index].unicode()))
            continue;
        if (index > start)
            found.append(text.mid(start, index - start));
        start = index + 1;
    }
    return found;
}

QString lowerCased(const QString &text) {
    icu::UnicodeString result(aliased(text));
    return fromICU(result.toLower(icu::Locale::getRoot()));
}

QString upperCased(const QString &text) {
    icu::UnicodeString result(aliased(text));
    return fromICU(result.toUpper(icu::Locale::getRoot()));
}

QString caseFolded(const QString &text) {
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2 *composition = icu::Normalizer2::getNFCInstance(status);
    icu::UnicodeString composed = composition->normalize(aliased(text), status);
    // Folding decomposes some composed letters.
    return fromICU(composition->normalize(composed.foldCase(), status));
}

qint64 characterCount(const QString &text) {
    const icu::UnicodeString codeUnits = aliased(text);
    const auto breaks = characterBreaks(codeUnits);
    qint64 count = 0;
    while (breaks->next() != icu::BreakIterator::DONE)
        ++count;
    return count;
}

QString firstCharacters(const QString &text, qint64 count) {
    const icu::UnicodeString codeUnits = aliased(text);
    const auto breaks = characterBreaks(codeUnits);
    int32_t end = 0;
    for (qint64 index = 0; index < count; ++index) {
        const int32_t next = breaks->next();
        if (next == icu::BreakIterator::DONE)
            break;
        end = next;
    }
    return text.left(end);
}

qint64 alphanumericCount(const QString &text) {
    return countCodePoints(text, [](UChar32 codePoint) {
        return (U_GET_GC_MASK(codePoint) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
    });
}

qint64 wordCount(const QString &text) {
    bool isInsideWord = false;
    return countCodePoints(text, [&isInsideWord](UChar32 codePoint) {
        const bool wasInsideWord = isInsideWord;
        isInsideWord = !u_isUWhiteSpace(codePoint);
        return isInsideWord && !wasInsideWord;
    });
}

QString shortestDecimal(double number) {
    const double magnitude = std::fabs(number);
    const bool isPlain = magnitude == 0 || (magnitude >= 1e-4 && magnitude < 1e16);
    const QString digits = QString::number(number, isPlain ? 'f' : 'g', QLocale::FloatingPointShortest);
    return isPlain && !digits.contains(u'.') ? digits + QStringLiteral(".0") : digits;
}

} // namespace Text
