#pragma once

#include "Support/HistoryWorkspaceFixture.h"
#include "TolmiApp/Shell/ViewTexts.h"

#include <QVariantMap>

/// The history workspace for tests that are written in QML.
class HistoryFixture : public QObject {
    Q_OBJECT
    Q_PROPERTY(HistoryWorkspaceModel *model READ model NOTIFY opened)
    Q_PROPERTY(QObject *texts READ texts NOTIFY opened)

public:
    HistoryFixture();
    ~HistoryFixture() override;

    HistoryWorkspaceModel *model() const { return m_model.get(); }
    QObject *texts() const { return m_texts.get(); }

    /// Shows the workspace of a user with these entries: "raw", "refined", "language", "minutesAgo", "app",
    /// "bundleID", "audio" and "isPinned", each with a default. The sounds that "audio" names are there.
    Q_INVOKABLE void open(const QVariantList &entries);
    /// The same with `count` entries named "Entry 0", "Entry 1" and so on.
    Q_INVOKABLE void openMany(int count);

    /// Lets so many seconds pass.
    Q_INVOKABLE void pass(double seconds);
    Q_INVOKABLE void setRomanian();
    Q_INVOKABLE void setVanished(const QString &recording);
    Q_INVOKABLE void setUnplayable();
    Q_INVOKABLE void setUnwritable();
    Q_INVOKABLE QString clipboard() const;
    /// The file names that save panels proposed.
    Q_INVOKABLE QStringList proposedNames() const;
    Q_INVOKABLE bool chooseFile(const QString &path);
    Q_INVOKABLE QString writtenText() const;
    Q_INVOKABLE QStringList revealed() const;
    Q_INVOKABLE QStringList playerCalls() const;

Q_SIGNALS:
    void opened();

private:
    void open(const QList<HistoryEntry> &entries);

    std::unique_ptr<HistoryWorkspaceFixture> m_user;
    std::unique_ptr<ViewTexts> m_texts;
    std::unique_ptr<HistoryWorkspaceModel> m_model;
};
