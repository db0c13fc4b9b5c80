#pragma once

#include <QString>
#include <QStringList>

#include <vector>

/// Unicode rules on text, so that every part of the program counts, trims and matches alike.
namespace Text {

/// The text without white space and line ends at both ends: categories Z*, TAB, U+000A to U+000D, U+0085.
QString trimmed(const QString &text);

/// Which characters part a text.
enum class Separators {
    /// Category Zs and TAB.
    Blanks,
    /// All that trimmed() takes away.
    BlanksAndLineEnds,
};

/// The pieces of the text between separators, without empty ones.
QStringList pieces(const QString &text, Separators separators);

/// Lower case by the rules of no particular language.
QString lowerCased(const QString &text);

/// Upper case by the rules of no particular language; it may be longer than the text.
QString upperCased(const QString &text);

/// The number of characters as a reader counts them (extended grapheme clusters).
qint64 characterCount(const QString &text);

/// The first `count` characters as a reader counts them.
QString firstCharacters(const QString &text, qint64 count);

/// The number of code points of the general categories L, M and N.
qint64 alphanumericCount(const QString &text);

/// The number of pieces between code points with the White_Space property, empty pieces left out.
qint64 wordCount(const QString &text);

/// The shortest decimal form that reads back as the same number, with at least one digit behind the point;
/// with an exponent from 1e16 on and below 1e-4.
QString shortestDecimal(double number);

} // namespace Text
