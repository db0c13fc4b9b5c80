#include "TolmiApp/Updates/UpdatePrompt.h"

void UpdatePrompt::showChecking() {
    setPhase(Phase::Checking);
}

void UpdatePrompt::showFound(const AppcastItem &item) {
    setVersion(item.displayVersion);
    setReleaseNotes(item.releaseNotes);
    setPhase(Phase::Found);
}

void UpdatePrompt::showUpToDate() {
    setPhase(Phase::UpToDate);
}

void UpdatePrompt::showFailure(const QString &why) {
    setMessage(why);
    setPhase(Phase::Failed);
}

void UpdatePrompt::showDownloading() {
    setProgress(0);
    setPhase(Phase::Downloading);
}

void UpdatePrompt::showProgress(double share) {
    setProgress(share);
}

void UpdatePrompt::showDownloaded(const QString &path) {
    setFilePath(path);
    setPhase(Phase::Downloaded);
}

void UpdatePrompt::download() {
    if (m_phase == Phase::Found)
        Q_EMIT downloadRequested();
}

void UpdatePrompt::retry() {
    if (m_phase == Phase::Failed)
        Q_EMIT retryRequested();
}

void UpdatePrompt::dismiss() {
    setPhase(Phase::Hidden);
    Q_EMIT dismissed();
}
