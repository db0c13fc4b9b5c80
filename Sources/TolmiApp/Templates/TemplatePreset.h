#pragma once

#include "TolmiApp/Texts/L10n.h"

#include <QStringList>

/// The shapes into which a transcript can be put, in the order in which they are offered. An unknown stored
/// text is none of them.
enum class TemplatePreset {
    EmailClear,
    MeetingSummary,
    ActionItems,
    CustomerReply,
};

template <>
struct RawValues<TemplatePreset> {
    static constexpr std::array table {
        std::pair { TemplatePreset::EmailClear, QLatin1String("emailClear") },
        std::pair { TemplatePreset::MeetingSummary, QLatin1String("meetingSummary") },
        std::pair { TemplatePreset::ActionItems, QLatin1String("actionItems") },
        std::pair { TemplatePreset::CustomerReply, QLatin1String("customerReply") },
    };
};

/// The name of a preset.
QString title(TemplatePreset preset, AppLanguage language);

/// What a preset does, in a line.
QString subtitle(TemplatePreset preset, AppLanguage language);

/// `text` in the shape of `preset` with its fixed words in `language`; empty for white space alone. It
/// depends on nothing else, and does not end in a line feed.
QString transform(TemplatePreset preset, const QString &text, AppLanguage language);

/// The rules on text of which the shapes are made.
namespace TemplateText {

/// The words of `text` in one line, with single blanks between them.
QString normalize(const QString &text);

/// The stretches of `text` that end in a full stop, an exclamation mark or a question mark before white
/// space; `text` itself where there is none. An abbreviation ends a sentence too.
QStringList sentences(const QString &text);

/// The first eight words with a capital at the start, across the ends of sentences.
QString subject(const QString &text);

/// The first `limit` sentences, each in a line with its number.
QString numberedLines(const QStringList &sentences, qsizetype limit);

/// The first `limit` sentences, each in a line with an empty check box.
QString checkboxLines(const QStringList &sentences, qsizetype limit);

} // namespace TemplateText
