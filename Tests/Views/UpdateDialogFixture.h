#pragma once

#include "Support/SettingsStoreFixture.h"
#include "TolmiApp/Updates/UpdateDialogModel.h"

#include <QStringList>

/// The update dialog with a prompt; the test acts as the updater.
class UpdateDialogFixture : public QObject {
    Q_OBJECT
    Q_PROPERTY(UpdateDialogModel *model READ model CONSTANT)
    /// What the user answered, in order: "download", "retry", "dismiss" or the path of a file to show.
    Q_PROPERTY(QStringList answers READ answers NOTIFY answersChanged)

public:
    explicit UpdateDialogFixture(QObject *parent = nullptr);

    UpdateDialogModel *model() { return &m_model; }
    const QStringList &answers() const { return m_answers; }

    Q_INVOKABLE void speakRomanian() { m_settings.store.setUiLanguage(AppLanguage::Romanian); }
    Q_INVOKABLE void check() { m_prompt.showChecking(); }
    Q_INVOKABLE void find(const QString &version, const QString &notes);
    Q_INVOKABLE void findNothing() { m_prompt.showUpToDate(); }
    Q_INVOKABLE void fail(const QString &why) { m_prompt.showFailure(why); }
    Q_INVOKABLE void download(double share);
    Q_INVOKABLE void finish(const QString &path) { m_prompt.showDownloaded(path); }

Q_SIGNALS:
    void answersChanged();

private:
    void note(const QString &answer);

    SettingsStoreFixture m_settings;
    UpdatePrompt m_prompt;
    QStringList m_answers;
    UpdateDialogModel m_model;
};
