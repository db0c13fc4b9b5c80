#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/Updates/Appcast.h"

/// The state of the update dialog, and the user's answers. Main thread only.
class UpdatePrompt : public ObservableObject {
    Q_OBJECT

public:
    enum class Phase {
        /// Nothing to show.
        Hidden,
        Checking,
        /// A newer version is available.
        Found,
        UpToDate,
        Failed,
        Downloading,
        /// The file is at `filePath`; the user installs it.
        Downloaded,
    };
    Q_ENUM(Phase)

private:
    TOLMI_PUBLISHED_READONLY(Phase, phase, setPhase)
    /// The available version, as shown to the user.
    TOLMI_PUBLISHED_READONLY(QString, version, setVersion)
    /// Plain text; may be empty.
    TOLMI_PUBLISHED_READONLY(QString, releaseNotes, setReleaseNotes)
    /// Download progress, 0 to 1.
    TOLMI_PUBLISHED_READONLY(double, progress, setProgress)
    /// Why it failed.
    TOLMI_PUBLISHED_READONLY(QString, message, setMessage)
    /// The path of the downloaded file.
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

    /// The user wants to download the available version.
    Q_INVOKABLE void download();
    /// The user wants to retry after a failure.
    Q_INVOKABLE void retry();
    /// The user closes the dialog, which cancels a running check or download.
    Q_INVOKABLE void dismiss();

Q_SIGNALS:
    void downloadRequested();
    void retryRequested();
    void dismissed();
};
