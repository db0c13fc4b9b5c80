#include "TolmiApp/Dictation/DictationFlowManager.h"

#include "Foundation/Clock.h"
#include "Foundation/Log.h"
#include "Platform/Application.h"
#include "Platform/FileManager.h"
#include "TolmiApp/Dictation/DictationStages.h"
#include "TolmiApp/Settings/SettingsStore.h"

#include <algorithm>
#include <limits>

namespace {
/// What a sweep can count with; greater numbers overflow in seconds and in bytes.
constexpr qint64 mostRetentionHours = std::numeric_limits<qint64>::max() / 3600;
constexpr qint64 mostRetentionMB = std::numeric_limits<qint64>::max() / (1024LL * 1024);

qint64 usable(qint64 stored, qint64 most) {
    if (stored > most)
        logLine(QStringLiteral("Tolmi: the limit %1 for recordings is too large; using %2")
                    .arg(stored)
                    .arg(most));
    return std::min(stored, most);
}
} // namespace

std::shared_ptr<DictationFlowManager> DictationFlowManager::create(DictationFlowCollaborators collaborators,
    DictationFlowPlatform platform, std::shared_ptr<SettingsStore> settings) {
    const std::shared_ptr<DictationFlowManager> manager(
        new DictationFlowManager(std::move(collaborators), platform, std::move(settings)));
    platform.clock.post([weakManager = std::weak_ptr(manager)] {
        if (const auto manager = weakManager.lock())
            manager->setup();
    });
    return manager;
}

DictationFlowManager::DictationFlowManager(DictationFlowCollaborators collaborators,
    DictationFlowPlatform platform, std::shared_ptr<SettingsStore> settings)
    : m_collaborators(std::move(collaborators))
    , m_platform(platform)
    , m_settings(std::move(settings))
    , m_audioCacheStore(platform.fileManager)
    , m_maintenanceQueue(
          QStringLiteral("Tolmi.DictationFlowManager.maintenance"), SerialQueue::QualityOfService::Utility) {
    publishAccessibilityGranted(m_collaborators.hotkeyManager->checkAccessibility());
    observeSettings();
    observeActivation();
    applyAppAppearance(m_settings->appearance());
}

void DictationFlowManager::observeSettings() {
    connect(m_settings.get(), &ObservableObject::objectWillChange, this, &ObservableObject::objectWillChange);
    connect(m_settings.get(), &SettingsStore::processingTransitionSoundWillChange, this,
        &DictationFlowManager::syncProcessingTransitionSound);
    connect(m_settings.get(), &SettingsStore::processingTransitionSoundVolumeWillChange, this,
        &DictationFlowManager::syncProcessingTransitionSound);
    connect(m_settings.get(), &SettingsStore::appearanceWillChange, this,
        &DictationFlowManager::applyAppAppearance);
}

void DictationFlowManager::observeActivation() {
    connect(&m_platform.application, &Application::didBecomeActive, this, [this] {
        refreshAccessibilityAndHotkeyState();
        m_collaborators.liveCapture->warmupIfAuthorized();
    });
}

void DictationFlowManager::setup() {
    if (m_isSetUp)
        return;
    m_isSetUp = true;
    // Again, for the windows that have come since the construction.
    applyAppAppearance(m_settings->appearance());
    m_collaborators.hotkeyManager->onKeyDown = startingTask(&DictationFlowManager::startDictation);
    m_collaborators.hotkeyManager->onKeyUp = startingTask(&DictationFlowManager::stopAndProcess);
    m_collaborators.hotkeyManager->onChord = discardingRecording();
    m_collaborators.liveCapture->onSoundLost = [weakManager = weak_from_this()] {
        if (const auto manager = weakManager.lock())
            manager->loseSound();
    };
    refreshAccessibilityAndHotkeyState();
    configureRefiner();
    m_collaborators.liveCapture->warmupIfAuthorized();
    runAudioRetentionSweep();
    logReady();
}

/// A closure that starts a task of its own at each call; nothing queues these tasks.
std::function<void()> DictationFlowManager::startingTask(Task<> (DictationFlowManager::*operation)()) {
    return [weakManager = weak_from_this(), &clock = m_platform.clock, operation] {
        clock.post([weakManager, operation] {
            if (const auto manager = weakManager.lock())
                launch((*manager.*operation)());
        });
    };
}

/// A closure that takes its turn behind the start that a key-down before it has asked for.
std::function<void()> DictationFlowManager::discardingRecording() {
    return [weakManager = weak_from_this(), &clock = m_platform.clock] {
        clock.post([weakManager] {
            if (const auto manager = weakManager.lock())
                manager->discardRecording();
        });
    };
}

/// The only writer of the state.
void DictationFlowManager::updateState(const DictationState &newState) {
    publishState(newState);
    logStage(newState, m_platform.clock.now());
    switch (newState.kind()) {
    case DictationState::Kind::Idle:
        stopMetering(true);
        overlayPanel().hide();
        break;
    case DictationState::Kind::Recording:
        overlayPanel().show(newState, m_settings->uiLanguage());
        startMetering();
        break;
    default:
        stopMetering(false);
        overlayPanel().show(newState, m_settings->uiLanguage());
        break;
    }
    syncProcessingTransitionSound();
}

/// Shows the error until its reset.
void DictationFlowManager::fail(const QString &message) {
    updateState(DictationState::error(message));
    scheduleResetAfterError();
}

void DictationFlowManager::scheduleResetAfterError() {
    launch(resetAfterError(shared_from_this()));
}

Task<> DictationFlowManager::resetAfterError(std::shared_ptr<DictationFlowManager> manager) {
    constexpr double errorSeconds = 3.0;
    co_await sleep(manager->m_platform.clock, errorSeconds);
    if (manager->state().kind() == DictationState::Kind::Error)
        manager->updateState(DictationState::Kind::Idle);
}

void DictationFlowManager::syncProcessingTransitionSound() {
    m_collaborators.transitionSoundPlayer->sync(
        state(), m_settings->processingTransitionSound(), m_settings->processingTransitionSoundVolume());
}

void DictationFlowManager::applyAppAppearance(AppAppearance appearance) {
    m_platform.application.setAppearance(nsAppearance(appearance));
}

/// Builds the watch on the key anew at each call, so that every activation revives one that the system ended.
void DictationFlowManager::refreshAccessibilityAndHotkeyState() {
    publishAccessibilityGranted(m_collaborators.hotkeyManager->checkAccessibility());
    Q_EMIT rightsChecked();
    if (accessibilityGranted())
        m_collaborators.hotkeyManager->start();
    else
        m_collaborators.hotkeyManager->stop();
}

void DictationFlowManager::requestAccessibility() {
    m_collaborators.hotkeyManager->promptForAccessibility();
    m_collaborators.hotkeyManager->openAccessibilitySettings();
    launch(pollAccessibility(weak_from_this(), &m_platform.clock));
}

Task<> DictationFlowManager::pollAccessibility(
    std::weak_ptr<DictationFlowManager> weakManager, Clock *clock) {
    constexpr int attempts = 20;
    constexpr double secondsBetween = 1.0;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        co_await sleep(*clock, secondsBetween);
        const auto manager = weakManager.lock();
        if (!manager)
            co_return;
        manager->refreshAccessibilityAndHotkeyState();
        if (manager->accessibilityGranted())
            co_return;
    }
}

void DictationFlowManager::configureRefiner() {
    const QUrl endpoint(m_settings->ollamaEndpoint(), QUrl::TolerantMode);
    if (!m_settings->refinementEnabled() || !endpoint.isValid()) {
        m_refiner = nullptr;
        return;
    }
    m_refiner = m_collaborators.makeOllamaRefiner({ .endpoint = endpoint,
        .model = m_settings->ollamaModel(),
        .timeout = m_settings->ollamaTimeout(),
        .systemPrompt = m_settings->ollamaSystemPrompt() });
}

void DictationFlowManager::runAudioRetentionSweep() {
    m_maintenanceQueue.async(
        [&fileManager = m_platform.fileManager, makeSweeper = m_collaborators.makeRetentionSweeper,
            rootDirectoryURL = m_audioCacheStore.rootDirectoryURL(),
            retentionHours = usable(m_settings->audioRetentionHours(), mostRetentionHours),
            maxSizeMB = usable(m_settings->audioRetentionMaxMB(), mostRetentionMB)] {
            try {
                fileManager.createDirectory(rootDirectoryURL);
                makeSweeper(fileManager)->sweep(rootDirectoryURL, retentionHours, maxSizeMB);
            } catch (const std::exception &error) {
                logLine(
                    QStringLiteral("Tolmi: audio retention sweep failed: ") + localizedDescription(error));
            }
        });
}

OverlayPanel &DictationFlowManager::overlayPanel() {
    if (!m_overlayPanel)
        m_overlayPanel = m_collaborators.makeOverlayPanel();
    return *m_overlayPanel;
}
