#include "TolmiApp/Updates/SoftwareVersion.h"

#include <QStringList>

#include <algorithm>

namespace {
/// A parsed version; "1.0-beta2" has the numbers 1 and 0 and the parts "beta" and "2".
struct Version {
    QStringList numbers;
    QStringList name;
};

enum class Kind {
    Separator,
    Digit,
    Letter,
};

Kind kindOf(QChar character) {
    if (character >= u'0' && character <= u'9')
        return Kind::Digit;
    return character.isLetter() ? Kind::Letter : Kind::Separator;
}

bool isNumber(const QString &part) {
    return kindOf(part.front()) == Kind::Digit;
}

/// The runs of digits and of letters; numbers without leading zeros, zero being one digit.
QStringList partsOf(const QString &text) {
    QStringList parts;
    Kind previous = Kind::Separator;
    for (const QChar character : text) {
        const Kind kind = kindOf(character);
        if (kind != Kind::Separator && kind != previous)
            parts.append(QString());
        if (kind != Kind::Separator)
            parts.last()
                = parts.last() == u"0" && kind == Kind::Digit ? QString(character) : parts.last() + character;
        previous = kind;
    }
    return parts;
}

Version versionOf(const QString &text) {
    QStringList parts = partsOf(text.section(u'+', 0, 0).toLower());
    if (!parts.isEmpty() && parts.front() == u"v")
        parts.removeFirst();
    const auto nameStart = std::find_if_not(parts.cbegin(), parts.cend(), isNumber);
    Version version { QStringList(parts.cbegin(), nameStart), QStringList(nameStart, parts.cend()) };
    while (!version.numbers.isEmpty() && version.numbers.last() == u"0")
        version.numbers.removeLast();
    return version;
}

/// Numbers, of any length, are compared by value and come before words.
std::weak_ordering compareParts(const QString &left, const QString &right) {
    if (isNumber(left) != isNumber(right))
        return isNumber(left) ? std::weak_ordering::less : std::weak_ordering::greater;
    if (isNumber(left) && left.size() != right.size())
        return left.size() <=> right.size();
    return left.compare(right) <=> 0;
}

std::weak_ordering compareRows(const QStringList &left, const QStringList &right) {
    for (qsizetype index = 0; index < std::min(left.size(), right.size()); ++index) {
        const std::weak_ordering order = compareParts(left[index], right[index]);
        if (order != 0)
            return order;
    }
    return left.size() <=> right.size();
}
} // namespace

std::weak_ordering compareVersions(const QString &leftText, const QString &rightText) {
    const Version left = versionOf(leftText);
    const Version right = versionOf(rightText);
    const std::weak_ordering order = compareRows(left.numbers, right.numbers);
    if (order != 0)
        return order;
    if (left.name.isEmpty() != right.name.isEmpty())
        return left.name.isEmpty() ? std::weak_ordering::greater : std::weak_ordering::less;
    return compareRows(left.name, right.name);
}
