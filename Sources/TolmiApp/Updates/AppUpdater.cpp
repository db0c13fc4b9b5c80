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
/// The trimmed string at `key`; empty if the value is not a string.
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
    // Connected last, because the initial value comes from the controller.
    connect(
        this, &AppUpdater::automaticallyChecksForUpdatesWillChange, this, &AppUpdater::forwardToController);
}

/// An observer that assigns in a later iteration of the event loop. It reads the value only then: outdated
/// values would be forwarded back to the controller and could oscillate forever.
UpdaterController::Observer AppUpdater::assignment(
    bool (UpdaterController::*read)() const, void (AppUpdater::*assign)(bool)) {
    return [updater = QPointer(this), &clock = m_clock, read, assign] {
        clock.post([updater, read, assign] {
            if (updater)
                (updater->*assign)((updater->m_updaterController.get()->*read)());
        });
    };
}

void AppUpdater::forwardToController(bool isAutomatic) {
    // Prevents an endless loop between this and the controller.
    if (std::exchange(m_lastForwarded, isAutomatic) == isAutomatic)
        return;
    m_clock.post([weakController = std::weak_ptr(m_updaterController), isAutomatic] {
        if (const auto controller = weakController.lock())
            controller->setAutomaticallyChecksForUpdates(isAutomatic);
    });
}
