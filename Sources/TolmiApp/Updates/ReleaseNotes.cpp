#include "TolmiApp/Updates/ReleaseNotes.h"

#include "Text/Text.h"

#include <QStringList>

#include <array>
#include <optional>
#include <utility>

namespace {
/// The name of a tag such as `</P class="x">`, without slash and in lower case.
QString tagName(QStringView tag) {
    const qsizetype start = tag.startsWith(u'/') ? 1 : 0;
    qsizetype end = start;
    while (end < tag.size() && tag[end].isLetterOrNumber())
        ++end;
    return tag.sliced(start, end - start).toString().toLower();
}

/// The plain-text replacement of a tag.
QString replacement(QStringView tag) {
    static const QStringList blocks { QStringLiteral("p"), QStringLiteral("div"), QStringLiteral("ul"),
        QStringLiteral("ol"), QStringLiteral("h1"), QStringLiteral("h2"), QStringLiteral("h3"),
        QStringLiteral("h4"), QStringLiteral("h5"), QStringLiteral("h6") };
    const QString name = tagName(tag);
    if (name == u"li")
        return tag.startsWith(u'/') ? QString() : QStringLiteral("\n\u2022 ");
    if (name == u"br")
        return QStringLiteral("\n");
    return blocks.contains(name) ? QStringLiteral("\n\n") : QString();
}

/// The character of an entity such as "amp", "#233" or "#xe9"; absent if invalid.
std::optional<QString> entityText(QStringView name) {
    static constexpr std::array<std::pair<QStringView, char16_t>, 6> named { { { u"amp", u'&' },
        { u"lt", u'<' }, { u"gt", u'>' }, { u"quot", u'"' }, { u"apos", u'\'' }, { u"nbsp", u'\u00a0' } } };
    for (const auto &[known, character] : named) {
        if (name == known)
            return QString(QChar(character));
    }
    if (!name.startsWith(u'#'))
        return std::nullopt;
    const bool isHexadecimal = name.size() > 1 && name[1].toLower() == u'x';
    bool isNumber = false;
    const char32_t code
        = isHexadecimal ? name.sliced(2).toUInt(&isNumber, 16) : name.sliced(1).toUInt(&isNumber, 10);
    const bool isCharacter = isNumber && code >= 0x20 && code <= 0x10ffff && !QChar::isSurrogate(code);
    return isCharacter ? std::optional(QString::fromUcs4(&code, 1)) : std::nullopt;
}

/// Replaces each run of white space by one space, at the ends too.
QString collapsed(const QString &words) {
    QString text;
    for (const QChar character : words) {
        const bool isBlank = character.isSpace() && character != u'\u00a0';
        if (!isBlank)
            text += character;
        else if (!text.endsWith(u' '))
            text += u' ';
    }
    return text;
}

/// The notes without tags. Notes without any are plain text and keep their line breaks.
QString withoutTags(const QString &html) {
    QString text;
    qsizetype position = 0;
    const bool isPlain = !html.contains(u'<');
    const auto take = [&](qsizetype end) {
        const QString words = html.mid(position, end - position);
        text += isPlain ? words : collapsed(words);
    };
    for (;;) {
        const qsizetype start = html.indexOf(u'<', position);
        const qsizetype end = start < 0 ? -1 : html.indexOf(u'>', start);
        if (end < 0)
            break;
        take(start);
        text += replacement(QStringView(html).sliced(start + 1, end - start - 1));
        position = end + 1;
    }
    take(html.size());
    return text;
}

QString withCharactersForEntities(const QString &text) {
    constexpr qsizetype longestEntity = 9;
    QString result;
    for (qsizetype position = 0; position < text.size(); ++position) {
        const qsizetype end = text[position] == u'&' ? text.indexOf(u';', position) : -1;
        std::optional<QString> character;
        if (end > 0 && end - position <= longestEntity)
            character = entityText(QStringView(text).sliced(position + 1, end - position - 1));
        result += character.value_or(QString(text[position]));
        if (character)
            position = end;
    }
    return result;
}
} // namespace

QString plainReleaseNotes(const QString &html) {
    const QStringList lines = withCharactersForEntities(withoutTags(html)).split(u'\n');
    QString text;
    bool isAfterGap = true;
    for (const QString &line : lines) {
        const QString words = Text::trimmed(line);
        const bool isGap = words.isEmpty();
        if (!isGap || !isAfterGap)
            text += words + u'\n';
        isAfterGap = isGap;
    }
    return Text::trimmed(text);
}
