#include "TolmiApp/History/HistoryRows.h"

#include "Support/Print.h"
#include "Text/DateTexts.h"

#include <QAbstractItemModelTester>
#include <QPersistentModelIndex>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {
HistoryEntry entry(const QString &text) {
    return { { .rawText = text, .refinedText = text, .language = QStringLiteral("ro") }, QUuid::createUuid(),
        { 1000 } };
}

class HistoryRowsTest : public testing::Test {
protected:
    HistoryRowsTest() {
        QObject::connect(&rows, &QAbstractItemModel::modelReset, &rows, [this] { ++resetCount; });
        for (const auto signal : { &QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved })
            QObject::connect(&rows, signal, &rows, [this] { ++changeCount; });
        QObject::connect(&rows, &QAbstractItemModel::rowsMoved, &rows, [this] { ++moveCount; });
    }
    ~HistoryRowsTest() override { EXPECT_EQ(resetCount, 0); }

    QString titles() const {
        QStringList titles;
        for (int row = 0; row < rows.rowCount(); ++row)
            titles += valueOf(row, HistoryRows::TitleRole).toString();
        return titles.join(u' ');
    }
    QVariant valueOf(int row, int role) const { return rows.data(rows.index(row), role); }

    /// Entries named by the words of `texts`; the same word is the same entry.
    QList<HistoryEntry> named(const QString &texts) {
        QList<HistoryEntry> entries;
        for (const QString &text : texts.split(u' ', Qt::SkipEmptyParts)) {
            if (!m_known.contains(text))
                m_known.insert(text, entry(text));
            entries.append(m_known.value(text));
        }
        return entries;
    }
    void show(const QString &texts) {
        rows.setEntries(named(texts));
        EXPECT_EQ(titles(), texts);
    }
    void forgetChanges() {
        changeCount = 0;
        moveCount = 0;
    }

    const DateTexts dates { { QStringLiteral("UTC"), false } };
    HistoryRows rows { dates };
    QAbstractItemModelTester tester { &rows, QAbstractItemModelTester::FailureReportingMode::Fatal };
    int resetCount = 0;
    int changeCount = 0;
    int moveCount = 0;

private:
    QHash<QString, HistoryEntry> m_known;
};
} // namespace

TEST_F(HistoryRowsTest, StartEmpty) {
    EXPECT_EQ(rows.rowCount(), 0);
    EXPECT_EQ(rows.rowOf(QUuid::createUuid()), -1);
    EXPECT_FALSE(rows.data({}, HistoryRows::TitleRole).isValid());
}

TEST_F(HistoryRowsTest, ANewEntryIsOneInsertedRow) {
    show(QStringLiteral("a b c"));
    forgetChanges();
    show(QStringLiteral("n a b c"));
    EXPECT_EQ(changeCount, 1);
    EXPECT_EQ(moveCount, 0);
}

TEST_F(HistoryRowsTest, APinnedEntryMovesUpAndBackAsTheSameRow) {
    show(QStringLiteral("a b c d e"));
    const QPersistentModelIndex row = rows.index(3);
    forgetChanges();
    show(QStringLiteral("d a b c e"));
    EXPECT_EQ(row.row(), 0);
    show(QStringLiteral("a b c d e"));
    EXPECT_EQ(row.row(), 3);
    EXPECT_EQ(moveCount, 2);
    EXPECT_EQ(changeCount, 0);
}

TEST_F(HistoryRowsTest, ASearchTakesRunsOfRowsAwayAndBringsThemBack) {
    show(QStringLiteral("ax b1 b2 cx d ex"));
    const QPersistentModelIndex stays = rows.index(3);
    forgetChanges();
    rows.setQuery(QStringLiteral("X"));
    EXPECT_EQ(titles(), QStringLiteral("ax cx ex"));
    EXPECT_EQ(changeCount, 2);
    EXPECT_EQ(stays.row(), 1);
    rows.setQuery({});
    EXPECT_EQ(titles(), QStringLiteral("ax b1 b2 cx d ex"));
    EXPECT_EQ(changeCount, 4);
    EXPECT_EQ(stays.row(), 3);
}

TEST_F(HistoryRowsTest, ASearchWithScatteredMatchesIsTwoChanges) {
    QStringList texts;
    for (int number = 0; number < 1000; ++number)
        texts += QString::number(number) + (number % 2 == 0 ? QStringLiteral("even") : QStringLiteral("odd"));
    show(texts.join(u' '));
    forgetChanges();
    rows.setQuery(QStringLiteral("odd"));
    EXPECT_EQ(rows.rowCount(), 500);
    EXPECT_LE(changeCount, 2);
    rows.setQuery({});
    EXPECT_EQ(titles(), texts.join(u' '));
    EXPECT_LE(changeCount, 4);
}

TEST_F(HistoryRowsTest, ReachAnyListFromAnyOther) {
    std::mt19937 random(7);
    const QStringList all = QStringLiteral("a b c d e f g h i j").split(u' ');
    for (int round = 0; round < 300; ++round) {
        QStringList texts = all;
        // Mostly changes as they happen, sometimes any order at all.
        if (round % 3 == 0)
            std::shuffle(texts.begin(), texts.end(), random);
        else
            std::swap(texts[int(random() % 10)], texts[int(random() % 10)]);
        const auto isLeftOut = [&random](const QString &) { return random() % 3 == 0; };
        texts.erase(std::remove_if(texts.begin(), texts.end(), isLeftOut), texts.end());
        show(texts.join(u' '));
    }
}

TEST_F(HistoryRowsTest, AnIdThatIsThereTwiceIsTwoRows) {
    const HistoryEntry one = entry(QStringLiteral("one"));
    HistoryEntry two = entry(QStringLiteral("two"));
    two.id = one.id;
    for (int round = 0; round < 3; ++round) {
        rows.setEntries({ one, two, one });
        EXPECT_EQ(titles(), QStringLiteral("one two one"));
        rows.setEntries({ two, one });
        EXPECT_EQ(titles(), QStringLiteral("two one"));
    }
}

TEST_F(HistoryRowsTest, AChangedEntryIsTold) {
    show(QStringLiteral("a b"));
    QList<HistoryEntry> entries = named(QStringLiteral("a b"));
    entries[1].isPinned = true;
    int toldRow = -1;
    QObject::connect(&rows, &QAbstractItemModel::dataChanged, &rows,
        [&](const QModelIndex &first) { toldRow = first.row(); });
    rows.setEntries(entries);
    EXPECT_EQ(toldRow, 1);
    EXPECT_TRUE(valueOf(1, HistoryRows::IsPinnedRole).toBool());
    EXPECT_EQ(changeCount, 1);
}

namespace {
struct Search {
    QString text;
    QString query;
    bool isFound;
};

class HistorySearch : public testing::TestWithParam<Search> { };
} // namespace

TEST_P(HistorySearch, FindsAPhraseInAnyCaseAndComposition) {
    const DateTexts dates { {} };
    HistoryRows rows(dates);
    HistoryEntry inRaw = entry(GetParam().text);
    inRaw.refinedText.clear();
    HistoryEntry inRefined = entry(GetParam().text);
    inRefined.rawText.clear();
    rows.setEntries({ inRaw, inRefined });
    rows.setQuery(GetParam().query);
    EXPECT_EQ(rows.rowCount(), GetParam().isFound ? 2 : 0);
}

INSTANTIATE_TEST_SUITE_P(App, HistorySearch,
    testing::Values(Search { QStringLiteral("Ședința de mâine"), QStringLiteral("ȘEDINȚA"), true },
        Search { QStringLiteral("S\u0326edint\u0326a"), QStringLiteral("ședința"), true },
        Search { QStringLiteral("Ședința"), QStringLiteral("sedinta"), false },
        Search { QStringLiteral("one two"), QStringLiteral("two one"), false },
        Search { QStringLiteral("one two"), QStringLiteral("e t"), true },
        Search { QStringLiteral("one\ntwo"), QStringLiteral("one two"), false },
        Search { QStringLiteral("Straße"), QStringLiteral("STRASSE"), true },
        Search { QStringLiteral("שלום עולם"), QStringLiteral("עולם"), true },
        Search { QStringLiteral("a.c"), QStringLiteral("a.c"), true },
        Search { QStringLiteral("abc"), QStringLiteral("a.c"), false },
        Search { QStringLiteral("🙂 fine"), QStringLiteral("🙂"), true },
        Search { {}, QStringLiteral("a"), false }));

TEST_F(HistoryRowsTest, ASearchDoesNotReachAcrossTheTwoTexts) {
    HistoryEntry divided = entry(QStringLiteral("ab"));
    divided.refinedText = QStringLiteral("cd");
    rows.setEntries({ divided });
    rows.setQuery(QStringLiteral("bc"));
    EXPECT_EQ(rows.rowCount(), 0);
}

TEST_F(HistoryRowsTest, AQueryThatChangesByLettersFindsWhatItFindsAtOnce) {
    std::mt19937 random(3);
    const auto randomText = [&random](size_t longest) {
        QString text;
        for (size_t length = random() % (longest + 1); length > 0; --length)
            text += random() % 2 == 0 ? u'a' : u'b';
        return text;
    };
    QList<HistoryEntry> entries;
    for (int number = 0; number < 60; ++number)
        entries.append(entry(randomText(8)));
    rows.setEntries(entries);
    QString query;
    for (int round = 0; round < 400; ++round) {
        const auto kind = random() % 4;
        query = kind == 0 ? randomText(4)
            : kind == 1   ? query.chopped(query.isEmpty() ? 0 : 1)
                          : query + randomText(1);
        rows.setQuery(query);
        int expected = 0;
        for (const HistoryEntry &entry : entries)
            expected += entry.rawText.contains(query) ? 1 : 0;
        ASSERT_EQ(rows.rowCount(), expected) << query.toStdString();
    }
}

TEST_F(HistoryRowsTest, APreparedSearchFindsTheSame) {
    show(QStringLiteral("ax b cx"));
    EXPECT_TRUE(rows.prepareSearch(2));
    EXPECT_FALSE(rows.prepareSearch(2));
    EXPECT_FALSE(rows.prepareSearch(2));
    rows.setQuery(QStringLiteral("x"));
    EXPECT_EQ(titles(), QStringLiteral("ax cx"));
}

namespace {
struct Title {
    QString raw;
    QString refined;
    QString expected;
};

class PreviewTitle : public testing::TestWithParam<Title> { };
} // namespace

TEST_P(PreviewTitle, IsTheRefinedTextElseTheRawOne) {
    HistoryEntry shown = entry(GetParam().raw);
    shown.refinedText = GetParam().refined;
    EXPECT_EQ(HistoryRows::previewTitle(shown, QStringLiteral("(empty)")), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(App, PreviewTitle,
    testing::Values(Title { QStringLiteral("raw"), QStringLiteral("fine"), QStringLiteral("fine") },
        Title { QStringLiteral("raw"), {}, QStringLiteral("raw") },
        Title { {}, {}, QStringLiteral("(empty)") },
        Title { {}, QStringLiteral("a\nb\n"), QStringLiteral("a b ") },
        Title { QStringLiteral("raw"), QStringLiteral("\n"), QStringLiteral(" ") }));

TEST_F(HistoryRowsTest, ARowTellsItsEntry) {
    HistoryEntry full = entry(QStringLiteral("raw"));
    full.refinedText = QStringLiteral("two\nlines");
    full.pasteTargetAppName = QStringLiteral("Notes");
    full.audioFileRelativePath = QStringLiteral("  ");
    full.isPinned = true;
    rows.setEntries({ full, entry(QString()) });
    rows.setContext({ AppLanguage::English, QStringLiteral("(empty)"), Date { 1000 + 7200 }, { full.id } });
    EXPECT_EQ(valueOf(0, HistoryRows::EntryIDRole).value<QUuid>(), full.id);
    EXPECT_EQ(valueOf(0, HistoryRows::TitleRole), QStringLiteral("two lines"));
    EXPECT_EQ(valueOf(0, HistoryRows::PreviewRole), QStringLiteral("two lines"));
    EXPECT_EQ(valueOf(0, HistoryRows::RelativeDateRole), QStringLiteral("2 hr. ago"));
    EXPECT_EQ(valueOf(0, HistoryRows::LanguageRole), QStringLiteral("RO"));
    EXPECT_EQ(valueOf(0, HistoryRows::PasteTargetRole), QStringLiteral("Notes"));
    EXPECT_TRUE(valueOf(0, HistoryRows::HasAudioRole).toBool());
    EXPECT_TRUE(valueOf(0, HistoryRows::IsPinnedRole).toBool());
    EXPECT_TRUE(valueOf(0, HistoryRows::IsTickedRole).toBool());
    EXPECT_EQ(valueOf(1, HistoryRows::TitleRole), QStringLiteral("(empty)"));
    EXPECT_EQ(valueOf(1, HistoryRows::PreviewRole), QString());
    EXPECT_EQ(valueOf(1, HistoryRows::PasteTargetRole), QString());
    EXPECT_FALSE(valueOf(1, HistoryRows::HasAudioRole).toBool());
    EXPECT_FALSE(valueOf(1, HistoryRows::IsTickedRole).toBool());
}

TEST_F(HistoryRowsTest, AnEntryWithoutRefinedTextHasItsRawTextAsTitleAlone) {
    HistoryEntry raw = entry(QStringLiteral("raw"));
    raw.refinedText.clear();
    rows.setEntries({ raw });
    EXPECT_EQ(valueOf(0, HistoryRows::TitleRole), QStringLiteral("raw"));
    EXPECT_EQ(valueOf(0, HistoryRows::PreviewRole), QString());
}

TEST_F(HistoryRowsTest, ALongTextIsShownInPart) {
    rows.setEntries({ entry(QString(399, u'a') + QString(500'000, u'b')),
        entry(QString(399, u'a') + QStringLiteral("🙂") + QString(10, u'b')) });
    EXPECT_LE(valueOf(0, HistoryRows::TitleRole).toString().size(), 400);
    EXPECT_LE(valueOf(0, HistoryRows::PreviewRole).toString().size(), 400);
    EXPECT_EQ(valueOf(1, HistoryRows::TitleRole).toString(), QString(399, u'a'));
}
