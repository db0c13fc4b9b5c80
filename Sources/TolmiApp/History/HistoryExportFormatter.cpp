#include "TolmiApp/History/HistoryExportFormatter.h"

#include "TolmiApp/Texts/L10n.h"

#include <QDateTime>

#include <algorithm>
#include <cmath>

using L10n::Key;
using L10n::Phrase;

namespace {
/// "2026-03-01T09:15:00Z". Instants outside the years 1 to 9999 count as the nearest one inside.
QString timeText(Date date) {
    constexpr double first = -62135596800; // 0001-01-01T00:00:00Z
    constexpr double last = 253402300799; // 9999-12-31T23:59:59Z
    const double seconds = std::clamp(std::floor(date.secondsSince1970()), first, last);
    return QDateTime::fromSecsSinceEpoch(qint64(seconds), Qt::UTC).toString(Qt::ISODate);
}

QStringList linesOf(const HistoryEntry &entry, qsizetype position, AppLanguage language) {
    const auto text = [language](Key key) { return L10n::text(key, language); };
    const auto labelled
        = [language](Key key, const QString &value) { return L10n::labelled(key, value, language); };
    const auto heading = [&](Key key) { return L10n::text(Phrase::heading, language, { text(key) }); };

    QStringList lines;
    lines << L10n::text(Phrase::historyExportEntry, language,
        { text(Key::historyExportEntryPrefix), QString::number(position) });
    lines << labelled(Key::historyExportTimestampLabel, timeText(entry.timestamp));
    lines << labelled(Key::historyExportLanguageLabel, entry.language);
    if (entry.pasteTargetAppName)
        lines << labelled(Key::historyExportPasteTargetAppLabel, *entry.pasteTargetAppName);
    // An empty name is still a target; an empty identifier says nothing.
    if (!entry.pasteTargetBundleID.value_or(QString()).isEmpty())
        lines << labelled(Key::historyExportPasteTargetBundleIDLabel, *entry.pasteTargetBundleID);
    if (entry.pasteTimestamp)
        lines << labelled(Key::historyExportPasteTimestampLabel, timeText(*entry.pasteTimestamp));
    lines << heading(Key::historyExportRawLabel) << entry.rawText << QString();
    lines << heading(Key::historyExportRefinedLabel) << entry.refinedText;
    return lines;
}
} // namespace

QString HistoryExportFormatter::format(const QList<HistoryEntry> &entries, AppLanguage language) {
    QString document;
    for (qsizetype index = 0; index < entries.size(); ++index)
        document += linesOf(entries[index], index + 1, language).join(u'\n') + QStringLiteral("\n\n");
    return document;
}
