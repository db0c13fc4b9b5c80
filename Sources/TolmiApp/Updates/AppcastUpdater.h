#pragma once

#include "Platform/Updater.h"
#include "TolmiApp/Updates/UpdateDownload.h"
#include "TolmiApp/Updates/UpdatePrompt.h"

#include <memory>

/// Checks a feed for updates, shows them through a prompt and downloads them on request. Does not install.
/// Automatic checks run at most once a day and show only available updates.
class AppcastUpdater final : public UpdaterController, public std::enable_shared_from_this<AppcastUpdater> {
public:
    /// Seconds from one automatic check to the next.
    static constexpr double automaticInterval = 24 * 3600;
    /// Seconds from the start to the first automatic check, so that the start is not slowed down.
    static constexpr double firstCheckDelay = 10;

    /// `prompt` must outlive the updater.
    static std::shared_ptr<AppcastUpdater> create(
        UpdatePlatform platform, UpdateSource source, UpdatePrompt &prompt);

    void start() override;
    void checkForUpdates() override;
    bool canCheckForUpdates() const override { return m_canCheck; }
    bool automaticallyChecksForUpdates() const override { return m_isAutomatic; }
    void setAutomaticallyChecksForUpdates(bool isAutomatic) override;
    void observeCanCheckForUpdates(Observer observer) override;
    void observeAutomaticallyChecksForUpdates(Observer observer) override;

private:
    enum class CheckKind {
        Visible,
        Silent,
    };

    AppcastUpdater(UpdatePlatform platform, UpdateSource source, UpdatePrompt &prompt);
    void listenToPrompt();
    void setCanCheck(bool canCheck);
    double secondsUntilAutomaticCheck() const;
    void schedule(double minimumDelay);
    void checkAutomatically();
    int begin();
    void end();
    void cancel();
    void check(CheckKind kind);
    void download();
    void showFound(const std::optional<AppcastItem> &item, CheckKind kind);
    void showFailure(const QString &why, CheckKind kind);
    static Task<> runCheck(std::weak_ptr<AppcastUpdater> weakUpdater, int activity, CheckKind kind);
    static Task<> fetch(std::weak_ptr<AppcastUpdater> weakUpdater, int activity);
    static std::shared_ptr<AppcastUpdater> ifCurrent(
        const std::weak_ptr<AppcastUpdater> &weakUpdater, int activity);
    static std::shared_ptr<AppcastUpdater> finish(const std::weak_ptr<AppcastUpdater> &weakUpdater,
        int activity, std::exception_ptr failure, CheckKind kind);

    const UpdatePlatform m_platform;
    const UpdateSource m_source;
    UpdatePrompt &m_prompt;
    bool m_canCheck = false;
    bool m_isAutomatic = true;
    bool m_isStarted = false;
    bool m_isScheduled = false;
    Observer m_canCheckObserver = [] {};
    Observer m_isAutomaticObserver = [] {};
    /// Number of the current check or download, so that a cancelled one can detect that it is outdated.
    int m_activity = 0;
    std::optional<AppcastItem> m_found;
};
