#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/Updates/Appcast.h"

/// What the dialog about updates shows, and the answers it gives. Main thread only.
class UpdatePrompt : public ObservableObject {
    Q_OBJECT

public:
    enum class Phase {
        /// There is nothing to show.
        Hidden,
        Checking,
        /// A newer version may be downloaded.
        Found,
        UpToDate,
        Failed,
        Downloading,
        /// The file lies at `filePath`; installing it is the user's.
        Downloaded,
    };
    Q_ENUM(Phase)

private:
    TOLMI_PUBLISHED_READONLY(Phase, phase, setPhase)
    /// The version that was found, as the user reads it.
    TOLMI_PUBLISHED_READONLY(QString, version, setVersion)
    /// Plain text; may be empty.
    TOLMI_PUBLISHED_READONLY(QString, releaseNotes, setReleaseNotes)
    /// How much of the file is here, 0 to 1.
    TOLMI_PUBLISHED_READONLY(double, progress, setProgress)
    /// Why it failed.
    TOLMI_PUBLISHED_READONLY(QString, message, setMessage)
    /// Where the downloaded file lies.
    TOLMI_PUBLISHED_READONLY(QString, filePath, setFilePath)

public:
    using ObservableObject::ObservableObject;

    void showChecking();
    void showFound(const AppcastItem &item);
    void showUpToDate();
    void showFailure(const QString &why);
    void showDownloading();
    void showProgress(double share);
    void showDownloaded(const QString &path);

    /// The user wants the version that was found.
    Q_INVOKABLE void download();
    /// The user wants to try again what failed.
    Q_INVOKABLE void retry();
    /// The user closes the dialog, which ends what it showed.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void downloadRequested();
    void retryRequested();
    void dismissed();
};
