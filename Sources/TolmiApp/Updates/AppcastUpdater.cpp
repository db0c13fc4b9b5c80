#include "TolmiApp/Updates/AppcastUpdater.h"

#include "Foundation/Clock.h"
#include "Foundation/Log.h"
#include "Platform/UserDefaults.h"

#include <algorithm>

namespace {
/// Seconds until an automatic check is retried when the updater was busy.
constexpr double retryDelay = 3600;

QString automaticKey() {
    return QStringLiteral("tolmi.updates.automaticallyChecks");
}

/// Seconds since 1970.
QString lastCheckKey() {
    return QStringLiteral("tolmi.updates.lastCheck");
}
} // namespace

std::shared_ptr<AppcastUpdater> AppcastUpdater::create(
    UpdatePlatform platform, UpdateSource source, UpdatePrompt &prompt) {
    const std::shared_ptr<AppcastUpdater> updater(new AppcastUpdater(platform, std::move(source), prompt));
    updater->listenToPrompt();
    return updater;
}

AppcastUpdater::AppcastUpdater(UpdatePlatform platform, UpdateSource source, UpdatePrompt &prompt)
    : m_platform(platform)
    , m_source(std::move(source))
    , m_prompt(prompt)
    , m_isAutomatic(platform.defaults.boolean(automaticKey()).value_or(true)) { }

void AppcastUpdater::listenToPrompt() {
    const auto call = [weakUpdater = weak_from_this()](void (AppcastUpdater::*answer)()) {
        return [weakUpdater, answer] {
            if (const auto updater = weakUpdater.lock())
                (updater.get()->*answer)();
        };
    };
    QObject::connect(&m_prompt, &UpdatePrompt::downloadRequested, call(&AppcastUpdater::download));
    QObject::connect(&m_prompt, &UpdatePrompt::retryRequested, call(&AppcastUpdater::checkForUpdates));
    QObject::connect(&m_prompt, &UpdatePrompt::dismissed, call(&AppcastUpdater::cancel));
}

void AppcastUpdater::start() {
    m_isStarted = true;
    setCanCheck(true);
    schedule(firstCheckDelay);
}

void AppcastUpdater::checkForUpdates() {
    if (m_canCheck)
        check(CheckKind::Visible);
}

void AppcastUpdater::setAutomaticallyChecksForUpdates(bool isAutomatic) {
    m_isAutomatic = isAutomatic;
    m_platform.defaults.set(automaticKey(), isAutomatic);
    m_isAutomaticObserver();
    if (m_isStarted)
        schedule(0);
}

void AppcastUpdater::observeCanCheckForUpdates(Observer observer) {
    m_canCheckObserver = std::move(observer);
    m_canCheckObserver();
}

void AppcastUpdater::observeAutomaticallyChecksForUpdates(Observer observer) {
    m_isAutomaticObserver = std::move(observer);
    m_isAutomaticObserver();
}

void AppcastUpdater::setCanCheck(bool canCheck) {
    m_canCheck = canCheck;
    m_canCheckObserver();
}

/// Zero or less when a check is due. A last check in the future, from a wrong clock, is ignored.
double AppcastUpdater::secondsUntilAutomaticCheck() const {
    const double now = m_platform.clock.now().secondsSince1970();
    const std::optional<double> lastCheck = m_platform.defaults.doubleValue(lastCheckKey());
    return lastCheck && *lastCheck <= now ? *lastCheck + automaticInterval - now : 0;
}

void AppcastUpdater::schedule(double minimumDelay) {
    if (m_isScheduled || !m_isAutomatic)
        return;
    m_isScheduled = true;
    const double delay = std::max(minimumDelay, secondsUntilAutomaticCheck());
    m_platform.clock.callAfter(delay, [weakUpdater = weak_from_this()] {
        if (const auto updater = weakUpdater.lock())
            updater->checkAutomatically();
    });
}

void AppcastUpdater::checkAutomatically() {
    m_isScheduled = false;
    if (m_isAutomatic && m_canCheck && secondsUntilAutomaticCheck() <= 0)
        check(CheckKind::Silent);
    schedule(retryDelay);
}

int AppcastUpdater::begin() {
    setCanCheck(false);
    return ++m_activity;
}

void AppcastUpdater::end() {
    ++m_activity;
    setCanCheck(true);
}

void AppcastUpdater::cancel() {
    if (!m_canCheck)
        end();
}

void AppcastUpdater::check(CheckKind kind) {
    // Stored for failed checks too, so that a failing server is not contacted more often.
    m_platform.defaults.set(lastCheckKey(), m_platform.clock.now().secondsSince1970());
    if (kind == CheckKind::Visible)
        m_prompt.showChecking();
    launch(runCheck(weak_from_this(), begin(), kind));
}

void AppcastUpdater::download() {
    if (!m_canCheck || !m_found)
        return;
    m_prompt.showDownloading();
    launch(fetch(weak_from_this(), begin()));
}

void AppcastUpdater::showFound(const std::optional<AppcastItem> &item, CheckKind kind) {
    m_found = item;
    if (item)
        m_prompt.showFound(*item);
    else if (kind == CheckKind::Visible)
        m_prompt.showUpToDate();
}

void AppcastUpdater::showFailure(const QString &why, CheckKind kind) {
    if (kind == CheckKind::Visible)
        m_prompt.showFailure(why);
    else
        logLine(QStringLiteral("Tolmi: the automatic check for updates failed: ") + why);
}

Task<> AppcastUpdater::runCheck(std::weak_ptr<AppcastUpdater> weakUpdater, int activity, CheckKind kind) {
    std::optional<AppcastItem> item;
    std::exception_ptr failure;
    auto search = [&] {
        const auto updater = weakUpdater.lock();
        return findUpdate(updater->m_platform, updater->m_source);
    }();
    try {
        item = co_await search;
    } catch (const std::exception &) {
        failure = std::current_exception();
    }
    if (const auto updater = finish(weakUpdater, activity, failure, kind))
        updater->showFound(item, kind);
}

Task<> AppcastUpdater::fetch(std::weak_ptr<AppcastUpdater> weakUpdater, int activity) {
    FileURL url;
    std::exception_ptr failure;
    auto transfer = [&] {
        const auto updater = weakUpdater.lock();
        return downloadUpdate(updater->m_platform, updater->m_source, *updater->m_found,
            [weakUpdater, activity](qint64 receivedSize) {
                const auto current = ifCurrent(weakUpdater, activity);
                if (current)
                    current->m_prompt.showProgress(double(receivedSize) / double(current->m_found->length));
                return current != nullptr;
            });
    }();
    try {
        url = co_await transfer;
    } catch (const std::exception &) {
        failure = std::current_exception();
    }
    if (const auto updater = finish(weakUpdater, activity, failure, CheckKind::Visible))
        updater->m_prompt.showDownloaded(url.path());
}

std::shared_ptr<AppcastUpdater> AppcastUpdater::ifCurrent(
    const std::weak_ptr<AppcastUpdater> &weakUpdater, int activity) {
    const auto updater = weakUpdater.lock();
    return updater && updater->m_activity == activity ? updater : nullptr;
}

/// Ends the activity and shows its failure, if any; returns the updater only on success.
std::shared_ptr<AppcastUpdater> AppcastUpdater::finish(const std::weak_ptr<AppcastUpdater> &weakUpdater,
    int activity, std::exception_ptr failure, CheckKind kind) {
    const auto updater = ifCurrent(weakUpdater, activity);
    if (!updater)
        return nullptr;
    updater->end();
    if (failure)
        updater->showFailure(localizedDescription(failure), kind);
    return failure ? nullptr : updater;
}
