#include "TolmiApp/Templates/TemplatePreset.h"

#include "Text/RegularExpression.h"
#include "Text/Text.h"

namespace {
using L10n::Key;
using L10n::Phrase;

constexpr qsizetype subjectWordCount = 8;
constexpr qsizetype keyPointCount = 5;
constexpr qsizetype nextStepCount = 3;
constexpr qsizetype actionCount = 6;
constexpr qsizetype replySentenceCount = 3;

const QString blank = QStringLiteral(" ");
const QString lineFeed = QStringLiteral("\n");

// Placeholders for missing text are English in every interface language.
const QString noSubject = QStringLiteral("Follow-up");
const QString noContent = QStringLiteral("1. (no content)");
const QString noAction = QStringLiteral("(no action extracted)");

struct Names {
    Key title;
    Key subtitle;
};

Names names(TemplatePreset preset) {
    switch (preset) {
    case TemplatePreset::EmailClear:
        return { Key::templateEmailClearTitle, Key::templateEmailClearSubtitle };
    case TemplatePreset::MeetingSummary:
        return { Key::templateMeetingSummaryTitle, Key::templateMeetingSummarySubtitle };
    case TemplatePreset::ActionItems:
        return { Key::templateActionItemsTitle, Key::templateActionItemsSubtitle };
    case TemplatePreset::CustomerReply:
        return { Key::templateCustomerReplyTitle, Key::templateCustomerReplySubtitle };
    }
    Q_UNREACHABLE();
}

QString email(const QString &normalized, const QStringList &sentences, AppLanguage language) {
    return L10n::text(
        Phrase::templateEmail, language, { TemplateText::subject(normalized), sentences.join(blank) });
}

// The next steps repeat the first sentences; they do not continue after the key points.
QString meetingSummary(const QStringList &sentences, AppLanguage language) {
    return L10n::text(Phrase::templateMeetingSummary, language,
        { TemplateText::numberedLines(sentences, keyPointCount),
            TemplateText::checkboxLines(sentences, nextStepCount) });
}

QString actionItems(const QStringList &sentences, AppLanguage language) {
    return L10n::text(
        Phrase::templateActionItems, language, { TemplateText::checkboxLines(sentences, actionCount) });
}

QString customerReply(const QStringList &sentences, AppLanguage language) {
    return L10n::text(
        Phrase::templateCustomerReply, language, { sentences.mid(0, replySentenceCount).join(blank) });
}

void appendUnlessBlank(QStringList &sentences, const QString &stretch) {
    const QString sentence = Text::trimmed(stretch);
    if (!sentence.isEmpty())
        sentences.append(sentence);
}
} // namespace

QString title(TemplatePreset preset, AppLanguage language) {
    return L10n::text(names(preset).title, language);
}

QString subtitle(TemplatePreset preset, AppLanguage language) {
    return L10n::text(names(preset).subtitle, language);
}

QString transform(TemplatePreset preset, const QString &text, AppLanguage language) {
    const QString normalized = TemplateText::normalize(text);
    if (normalized.isEmpty())
        return QString();
    const QStringList sentences = TemplateText::sentences(normalized);
    switch (preset) {
    case TemplatePreset::EmailClear:
        return email(normalized, sentences, language);
    case TemplatePreset::MeetingSummary:
        return meetingSummary(sentences, language);
    case TemplatePreset::ActionItems:
        return actionItems(sentences, language);
    case TemplatePreset::CustomerReply:
        return customerReply(sentences, language);
    }
    Q_UNREACHABLE();
}

namespace TemplateText {

QString normalize(const QString &text) {
    return Text::pieces(text, Text::Separators::BlanksAndLineEnds).join(blank);
}

QStringList sentences(const QString &text) {
    static const RegularExpression sentenceEnd(QStringLiteral("(?<=[.!?])\\s+"));
    if (text.isEmpty())
        return {};
    QStringList found;
    qsizetype cursor = 0;
    for (const RegularExpression::Match &match : sentenceEnd.matches(text)) {
        appendUnlessBlank(found, text.mid(cursor, match[0].start - cursor));
        cursor = match[0].start + match[0].length;
    }
    appendUnlessBlank(found, text.mid(cursor));
    return found.isEmpty() ? QStringList { text } : found;
}

QString subject(const QString &text) {
    const QStringList words = Text::pieces(text, Text::Separators::Blanks).mid(0, subjectWordCount);
    const QString line = Text::trimmed(words.join(blank));
    if (line.isEmpty())
        return noSubject;
    const QString first = Text::firstCharacters(line, 1);
    return Text::upperCased(first) + line.mid(first.size());
}

QString numberedLines(const QStringList &sentences, qsizetype limit) {
    QStringList lines;
    for (const QString &sentence : sentences.mid(0, limit))
        lines.append(QStringLiteral("%1. %2").arg(QString::number(lines.size() + 1), sentence));
    return lines.isEmpty() ? noContent : lines.join(lineFeed);
}

QString checkboxLines(const QStringList &sentences, qsizetype limit) {
    const QString box = QStringLiteral("- [ ] ");
    const QStringList taken = sentences.mid(0, limit);
    return taken.isEmpty() ? box + noAction : box + taken.join(lineFeed + box);
}

} // namespace TemplateText
