#pragma once

#include "Foundation/FileURL.h"
#include "TolmiApp/Texts/L10n.h"
#include "TolmiApp/Updates/UpdatePrompt.h"

#include <functional>

class SettingsStore;

/// What the dialog about updates says, in the language of the interface, and what its two buttons do. A text
/// that a phase has no use for is empty. Main thread only.
class UpdateDialogModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(UpdatePrompt::Phase phase READ phase NOTIFY phaseChanged)
    Q_PROPERTY(QString windowTitle READ windowTitle NOTIFY contentChanged)
    Q_PROPERTY(QString title READ title NOTIFY contentChanged)
    /// What went wrong.
    Q_PROPERTY(QString problem READ problem NOTIFY contentChanged)
    /// What the user may do.
    Q_PROPERTY(QString hint READ hint NOTIFY contentChanged)
    /// Both, for those who hear the dialog.
    Q_PROPERTY(QString description READ description NOTIFY contentChanged)
    Q_PROPERTY(QString releaseNotes READ releaseNotes NOTIFY contentChanged)
    Q_PROPERTY(QString releaseNotesLabel READ releaseNotesLabel NOTIFY contentChanged)
    /// Where the downloaded file lies.
    Q_PROPERTY(QString filePath READ filePath NOTIFY contentChanged)
    Q_PROPERTY(QString filePathLabel READ filePathLabel NOTIFY contentChanged)
    /// The button that goes on, and the one that closes the dialog, which is always there.
    Q_PROPERTY(QString actionText READ actionText NOTIFY contentChanged)
    Q_PROPERTY(QString dismissText READ dismissText NOTIFY contentChanged)
    /// How much of the file is here, 0 to 1, and the same in words.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged)
    Q_PROPERTY(QString progressLabel READ progressLabel NOTIFY contentChanged)

public:
    /// Shows a file to the user where it lies.
    using ShowFile = std::function<void(const FileURL &)>;

    /// The prompt and the settings outlive the model.
    UpdateDialogModel(
        UpdatePrompt &prompt, const SettingsStore &settings, QString installedVersion, ShowFile showFile);

    UpdatePrompt::Phase phase() const { return m_prompt.phase(); }
    QString windowTitle() const;
    QString title() const;
    QString problem() const;
    QString hint() const;
    QString description() const;
    QString releaseNotes() const;
    QString releaseNotesLabel() const;
    QString filePath() const;
    QString filePathLabel() const;
    QString actionText() const;
    QString dismissText() const;
    double progress() const;
    QString progressText() const;
    QString progressLabel() const;

    /// Downloads what was found, looks again after a failure, or shows the downloaded file; else nothing.
    Q_INVOKABLE void act();
    /// Closes the dialog, which ends what it shows.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void phaseChanged();
    void contentChanged();
    void progressChanged();

private:
    QString text(L10n::Phrase phrase, const QStringList &values = {}) const;

    UpdatePrompt &m_prompt;
    const SettingsStore &m_settings;
    const QString m_installedVersion;
    const ShowFile m_showFile;
};
