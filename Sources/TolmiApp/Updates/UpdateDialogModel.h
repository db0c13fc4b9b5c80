#pragma once

#include "Foundation/FileURL.h"
#include "TolmiApp/Texts/L10n.h"
#include "TolmiApp/Updates/UpdatePrompt.h"

#include <functional>

class SettingsStore;

/// The texts of the update dialog in the interface language, and the actions of its two buttons. Texts that a
/// phase does not use are empty. Main thread only.
class UpdateDialogModel final : public QObject {
    Q_OBJECT
    Q_PROPERTY(UpdatePrompt::Phase phase READ phase NOTIFY phaseChanged)
    Q_PROPERTY(QString windowTitle READ windowTitle NOTIFY contentChanged)
    Q_PROPERTY(QString title READ title NOTIFY contentChanged)
    /// What went wrong.
    Q_PROPERTY(QString problem READ problem NOTIFY contentChanged)
    /// What the user may do.
    Q_PROPERTY(QString hint READ hint NOTIFY contentChanged)
    /// Both, for screen readers.
    Q_PROPERTY(QString description READ description NOTIFY contentChanged)
    Q_PROPERTY(QString releaseNotes READ releaseNotes NOTIFY contentChanged)
    Q_PROPERTY(QString releaseNotesLabel READ releaseNotesLabel NOTIFY contentChanged)
    /// The path of the downloaded file.
    Q_PROPERTY(QString filePath READ filePath NOTIFY contentChanged)
    Q_PROPERTY(QString filePathLabel READ filePathLabel NOTIFY contentChanged)
    /// The action button, and the close button, which is always present.
    Q_PROPERTY(QString actionText READ actionText NOTIFY contentChanged)
    Q_PROPERTY(QString dismissText READ dismissText NOTIFY contentChanged)
    /// Download progress, 0 to 1, and as text.
    Q_PROPERTY(double progress READ progress NOTIFY progressChanged)
    Q_PROPERTY(QString progressText READ progressText NOTIFY progressChanged)
    Q_PROPERTY(QString progressLabel READ progressLabel NOTIFY contentChanged)

public:
    /// Reveals a file in the file manager.
    using ShowFile = std::function<void(const FileURL &)>;

    /// The prompt and the settings must outlive the model.
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

    /// Downloads the update, retries after a failure, or reveals the downloaded file, depending on the phase.
    Q_INVOKABLE void act();
    /// Closes the dialog and cancels what it shows.
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
