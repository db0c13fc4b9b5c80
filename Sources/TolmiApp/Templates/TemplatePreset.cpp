#include "TolmiApp/Templates/TemplatePreset.h"

#include "Text/RegularExpression.h"
#include "Text/Text.h"

namespace {
using L10n::Key;

constexpr qsizetype subjectWordCount = 8;
constexpr qsizetype keyPointCount = 5;
constexpr qsizetype nextStepCount = 3;
constexpr qsizetype actionCount = 6;
constexpr qsizetype replySentenceCount = 3;

const QString blank = QStringLiteral(" ");
const QString lineFeed = QStringLiteral("\n");

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

QString email(const QString &normalized, const QStringList &sentences, bool isRomanian) {
    const QString subject = TemplateText::subject(normalized);
    const QString body = sentences.join(blank);
    return isRomanian ? QStringLiteral("Subiect: ") + subject + QStringLiteral("\n\nBuna,\n\n") + body
            + QStringLiteral("\n\nCu respect,\n[Numele tau]")
                      : QStringLiteral("Subject: ") + subject + QStringLiteral("\n\nHello,\n\n") + body
            + QStringLiteral("\n\nBest regards,\n[Your Name]");
}

// The next steps are the first sentences once more, not those behind the key points.
QString meetingSummary(const QStringList &sentences, bool isRomanian) {
    const QString points = TemplateText::numberedLines(sentences, keyPointCount);
    const QString steps = TemplateText::checkboxLines(sentences, nextStepCount);
    return isRomanian ? QStringLiteral("Rezumat sedinta\n\nPuncte cheie:\n") + points
            + QStringLiteral("\n\nPasi urmatori:\n") + steps
                      : QStringLiteral("Meeting Summary\n\nKey Points:\n") + points
            + QStringLiteral("\n\nNext Steps:\n") + steps;
}

QString actionItems(const QStringList &sentences, bool isRomanian) {
    const QString items = TemplateText::checkboxLines(sentences, actionCount);
    return (isRomanian ? QStringLiteral("Pasi de actiune\n\n") : QStringLiteral("Action Items\n\n")) + items;
}

QString customerReply(const QStringList &sentences, bool isRomanian) {
    const QString core = sentences.mid(0, replySentenceCount).join(blank);
    return isRomanian ? QStringLiteral("Buna,\n\nIti multumim pentru mesaj.\n") + core
            + QStringLiteral("\n\nSpune-ne daca vrei detalii suplimentare.\n\nCu bine,\nEchipa suport")
                      : QStringLiteral("Hello,\n\nThank you for your message.\n") + core
            + QStringLiteral("\n\nPlease let us know if you would like any additional details.\n\nBest,\n"
                             "Support Team");
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
    const bool isRomanian = language == AppLanguage::Romanian;
    switch (preset) {
    case TemplatePreset::EmailClear:
        return email(normalized, sentences, isRomanian);
    case TemplatePreset::MeetingSummary:
        return meetingSummary(sentences, isRomanian);
    case TemplatePreset::ActionItems:
        return actionItems(sentences, isRomanian);
    case TemplatePreset::CustomerReply:
        return customerReply(sentences, isRomanian);
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
        return QStringLiteral("Follow-up");
    const QString first = Text::firstCharacters(line, 1);
    return Text::upperCased(first) + line.mid(first.size());
}

QString numberedLines(const QStringList &sentences, qsizetype limit) {
    QStringList lines;
    for (const QString &sentence : sentences.mid(0, limit))
        lines.append(QString::number(lines.size() + 1) + QStringLiteral(". ") + sentence);
    return lines.isEmpty() ? QStringLiteral("1. (no content)") : lines.join(lineFeed);
}

QString checkboxLines(const QStringList &sentences, qsizetype limit) {
    const QString box = QStringLiteral("- [ ] ");
    const QStringList taken = sentences.mid(0, limit);
    return taken.isEmpty() ? box + QStringLiteral("(no action extracted)") : box + taken.join(lineFeed + box);
}

} // namespace TemplateText
