#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// Unicode operations, so that every part of the program counts, trims and compares alike.
namespace Text {

/// `text` without leading and trailing white space: categories Z*, TAB, U+000A to U+000D, U+0085.
QString trimmed(const QString &text);

/// Which characters separate pieces of a string.
enum class Separators {
    /// Category Zs and TAB.
    Blanks,
    /// All that trimmed() removes.
    BlanksAndLineEnds,
};

/// The non-empty pieces of `text` between separators.
QStringList pieces(const QString &text, Separators separators);

/// Lower case, independent of language.
QString lowerCased(const QString &text);

/// Upper case, independent of language; it may be longer than `text`.
QString upperCased(const QString &text);

/// For comparison regardless of case and composition: full case folding, normalization form C. Diacritics
/// matter.
QString caseFolded(const QString &text);

/// The number of user-perceived characters (extended grapheme clusters).
qint64 characterCount(const QString &text);

/// The first `count` user-perceived characters.
QString firstCharacters(const QString &text, qint64 count);

/// The number of code points of the general categories L, M and N.
qint64 alphanumericCount(const QString &text);

/// The number of non-empty pieces between code points with the White_Space property.
qint64 wordCount(const QString &text);

/// The shortest decimal form that reads back as the same number, with at least one digit after the point; in
/// exponent notation from 1e16 up and below 1e-4.
QString shortestDecimal(double number);

} // namespace Text
