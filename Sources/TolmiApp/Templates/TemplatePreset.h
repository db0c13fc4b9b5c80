#pragma once

#include "TolmiApp/Texts/L10n.h"

#include <QStringList>

/// The available templates, in display order. An unknown stored string is none of them.
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

/// A one-line description of a preset.
QString subtitle(TemplatePreset preset, AppLanguage language);

/// Applies `preset` to `text`, with its fixed words in `language`. A pure function. Empty for blank text;
/// never ends in a line feed.
QString transform(TemplatePreset preset, const QString &text, AppLanguage language);

/// The text operations that the templates use.
namespace TemplateText {

/// `text` in one line, with single spaces between words.
QString normalize(const QString &text);

/// Splits `text` after each full stop, exclamation mark or question mark followed by white space; `text`
/// itself if there is none. Abbreviations are not recognised.
QStringList sentences(const QString &text);

/// The first eight words, capitalised, regardless of sentence ends.
QString subject(const QString &text);

/// The first `limit` sentences as a numbered list.
QString numberedLines(const QStringList &sentences, qsizetype limit);

/// The first `limit` sentences as a list of empty check boxes.
QString checkboxLines(const QStringList &sentences, qsizetype limit);

} // namespace TemplateText
