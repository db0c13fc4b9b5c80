#include "TolmiApp/Updates/AppUpdater.h"

#include "Foundation/Clock.h"
#include "Foundation/Log.h"
#include "Text/Text.h"

#include <QPointer>

struct AppUpdater::Configuration {
    bool isConfigured;
    QString feedURL;
    QString publicKey;
};

namespace {
/// The text under `key` without white space around it; empty for anything but a text.
QString trimmedText(const QVariantMap &dictionary, const QString &key) {
    const QVariant value = dictionary.value(key);
    return value.typeId() == QMetaType::QString ? Text::trimmed(value.toString()) : QString();
}
} // namespace

AppUpdater::AppUpdater(const BundleInfo &bundle, const MakeController &makeController, Clock &clock)
    : m_clock(clock) {
    m_automaticallyChecksForUpdates = true;
    setIsConfigured(sparkleConfiguration(bundle).isConfigured);
    if (m_isConfigured)
        startUpdater(makeController);
    else
        switchOff();
}

void AppUpdater::checkForUpdates() {
    if (m_updaterController)
        m_updaterController->checkForUpdates();
}

AppUpdater::Configuration AppUpdater::sparkleConfiguration(const BundleInfo &bundle) {
    const QString feedURL = trimmedText(bundle.infoDictionary, QStringLiteral("SUFeedURL"));
    const QString publicKey = trimmedText(bundle.infoDictionary, QStringLiteral("SUPublicEDKey"));
    return { !feedURL.isEmpty() && !publicKey.isEmpty(), feedURL, publicKey };
}

void AppUpdater::switchOff() {
    setCanCheckForUpdates(false);
    setAutomaticallyChecksForUpdates(false);
    logLine(QStringLiteral("Tolmi: Sparkle updater disabled because SUFeedURL/SUPublicEDKey are missing."));
}

void AppUpdater::startUpdater(const MakeController &makeController) {
    m_updaterController = makeController();
    m_updaterController->start();
    setCanCheckForUpdates(m_updaterController->canCheckForUpdates());
    setAutomaticallyChecksForUpdates(m_updaterController->automaticallyChecksForUpdates());
    m_updaterController->observeCanCheckForUpdates(
        assignment(&UpdaterController::canCheckForUpdates, &AppUpdater::setCanCheckForUpdates));
    m_updaterController->observeAutomaticallyChecksForUpdates(assignment(
        &UpdaterController::automaticallyChecksForUpdates, &AppUpdater::setAutomaticallyChecksForUpdates));
    // The value of now is not passed on: it came from there.
    connect(this, &AppUpdater::automaticallyChecksForUpdatesWillChange, this, &AppUpdater::passOn);
}

/// An observer that assigns in a later turn of the main loop. It reads then, and not when it is told: old
/// values on their way would be passed on, come back and chase one another for ever.
UpdaterController::Observer AppUpdater::assignment(
    bool (UpdaterController::*read)() const, void (AppUpdater::*assign)(bool)) {
    return [updater = QPointer(this), &clock = m_clock, read, assign] {
        clock.post([updater, read, assign] {
            if (updater)
                (updater->*assign)((updater->m_updaterController.get()->*read)());
        });
    };
}

void AppUpdater::passOn(bool isAutomatic) {
    // Else what comes from the updater would go back there, and so on for ever.
    if (std::exchange(m_lastPassedOn, isAutomatic) == isAutomatic)
        return;
    m_clock.post([weakController = std::weak_ptr(m_updaterController), isAutomatic] {
        if (const auto controller = weakController.lock())
            controller->setAutomaticallyChecksForUpdates(isAutomatic);
    });
}
