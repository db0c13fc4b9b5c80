// Cost of one keystroke in the search field of the history, and of preparing the texts once.

#include "Text/DateTexts.h"
#include "TolmiApp/History/HistoryRows.h"

#include <QStringList>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <random>
#include <vector>

namespace {
double milliseconds(const std::function<void()> &work) {
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

const QStringList words
    = QStringLiteral("astăzi am vorbit cu echipa despre termenul de livrare și despre întâlnirea de mâine "
                     "dimineață când vine clientul din Cluj să vadă ultima variantă a proiectului nostru")
          .split(u' ');

/// About 140 letters, a typical spoken sentence.
QString sentence(std::mt19937 &random) {
    QString text;
    while (text.size() < 140)
        text += words[qsizetype(random() % size_t(words.size()))] + u' ';
    return text;
}

QList<HistoryEntry> history(int count) {
    std::mt19937 random(1);
    QList<HistoryEntry> entries;
    for (int number = 0; number < count; ++number) {
        const QString text = sentence(random);
        entries.append({ { .rawText = text,
                             .refinedText = text.toUpper() + QString::number(number),
                             .language = QStringLiteral("ro") },
            QUuid::createUuid(), { 769156800.0 - number } });
    }
    return entries;
}

/// The times for typing each query letter by letter and deleting it again.
std::vector<double> keystrokes(HistoryRows &rows) {
    std::vector<double> times;
    for (const QString &query : { QStringLiteral("întâlnirea de"), QStringLiteral("9999"),
             QStringLiteral("proiectului nostru de mâine"), QStringLiteral("xyz") }) {
        for (qsizetype length = 1; length <= query.size(); ++length)
            times.push_back(milliseconds([&] { rows.setQuery(query.left(length)); }));
        for (qsizetype length = query.size() - 1; length >= 0; --length)
            times.push_back(milliseconds([&] { rows.setQuery(query.left(length)); }));
    }
    std::sort(times.begin(), times.end());
    return times;
}

void measure(int count, const char *goal) {
    const DateTexts dates({});
    HistoryRows rows(dates);
    const QList<HistoryEntry> entries = history(count);
    const double showing = milliseconds([&] { rows.setEntries(entries); });
    const double preparing = milliseconds([&] { rows.prepareSearch(count); });
    const std::vector<double> times = keystrokes(rows);
    std::printf("%7d entries: a keystroke %6.2f ms at the median (goal %s), %6.2f ms at worst of %zu;"
                " shown first in %.1f ms, made ready in %.1f ms\n",
        count, times[times.size() / 2], goal, times.back(), times.size(), showing, preparing);
}
} // namespace

int main() {
    measure(10'000, "under 5");
    measure(100'000, "under 50");
}
