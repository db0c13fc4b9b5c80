#pragma once

#include "TolmiApp/History/HistoryEntry.h"
#include "TolmiApp/Settings/AppLanguage.h"

#include <QAbstractListModel>
#include <QSet>

#include <memory>
#include <vector>

class DateTexts;
struct RowMove;
struct RowRun;

/// The entries of the history that a search leaves, as rows of a list. A row stays the same row as long as
/// its entry is shown: every change is told as rows that come, go or move.
class HistoryRows final : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        EntryIDRole = Qt::UserRole,
        TitleRole,
        PreviewRole,
        RelativeDateRole,
        LanguageRole,
        HasAudioRole,
        PasteTargetRole,
        IsPinnedRole,
        IsTickedRole,
    };

    /// What rows say beside what their entries say.
    struct Context {
        AppLanguage language = AppLanguage::English;
        /// What stands for an entry without any text.
        QString emptyTitle;
        /// What relative dates count from.
        Date now;
        QSet<QUuid> tickedIDs;
    };

    /// `dates` must outlive the rows.
    explicit HistoryRows(const DateTexts &dates, QObject *parent = nullptr);
    ~HistoryRows() override;

    int rowCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Replaces all entries, which stand in the order of their display; the search stays.
    void setEntries(const QList<HistoryEntry> &entries);

    /// Shows the entries that have `query` in one of their texts, in any case; an empty one shows all.
    void setQuery(const QString &query);

    /// Gets the texts of up to `count` more entries ready, so that a search finds them prepared; false when
    /// none is left.
    bool prepareSearch(int count);

    void setContext(Context context);
    const Context &context() const { return m_context; }
    void setNow(Date now);
    void setTickedIDs(const QSet<QUuid> &ids);

    /// The shown entry of a row.
    const HistoryEntry &entry(int row) const;

    /// The first row with this entry; -1 when it is not shown.
    int rowOf(const QUuid &id) const;

    /// What stands for a dictation in one line: its refined text, else its raw one, without line ends.
    static QString previewTitle(const FinishedDictation &dictation, const QString &emptyTitle);

private:
    struct Item;
    using ItemPointer = std::shared_ptr<Item>;
    using Items = std::vector<ItemPointer>;

    /// Those among the items that have the query; the shown ones are known to, if it is said.
    Items matching(const Items &among, bool areShownOnesMatching);
    void show(const Items &items);
    void remove(const RowRun &run);
    void move(const RowMove &move);
    void insert(const RowRun &run, const Items &items);
    void tellAll(const QList<int> &roles);

    const DateTexts &m_dates;
    Context m_context;
    /// The query in the form in which texts are searched.
    QByteArray m_query;
    Items m_all;
    Items m_shown;
    /// How many of m_all prepareSearch has looked at.
    size_t m_preparedCount = 0;
};
