#include "Main/Composition.h"

#include "Foundation/Log.h"
#include "Main/Adapters.h"
#include "Main/BundleInformation.h"
#include "Main/Diagnosis.h"
#include "Main/Interface.h"
#include "Main/Updates.h"
#include "TolmiApp/Audio/AudioRecorder.h"
#include "TolmiApp/Audio/AudioRetentionSweeper.h"
#include "TolmiApp/Audio/LiveAudioCapture.h"
#include "TolmiApp/Audio/ProcessingTransitionSoundPlayer.h"
#include "TolmiApp/Control/ControlCommands.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/Dictation/DictationPause.h"
#include "TolmiApp/Dictation/GlobalHotkeyManager.h"
#include "TolmiApp/Dictation/SystemPasteService.h"
#include "TolmiApp/History/TranscriptionHistory.h"
#include "TolmiApp/Overlay/OverlayPanel.h"
#include "TolmiApp/Overlay/QuickOverlayWindow.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Settings/StartingModel.h"
#include "TolmiApp/Shell/ViewAppearance.h"
#include "TolmiApp/Studio/StudioAtLaunch.h"
#include "TolmiApp/Transcription/AdaptiveTranscriptionService.h"
#include "TolmiCore/GuardedHttpClient.h"
#include "TolmiCore/OllamaRefiner.h"
#include "TolmiCore/RuleBasedRefiner.h"

#include <QCoreApplication>
#include <QQmlEngine>
#include <QQuickView>

namespace {
BundleInfo bundleInfo(const char *programArgument) {
    return { QString::fromLocal8Bit(programArgument), FileURL(QCoreApplication::applicationDirPath()),
        bundleInformation() };
}
} // namespace

/// Declared in the order of construction: whatever is named lower uses what is named above it.
struct Composition::Parts {
    explicit Parts(LaunchOptions given)
        : launch(std::move(given))
        , bundle(bundleInfo(launch.programArgument))
        , adapters(mode_t(launch.usersMask)) { }

    void start();
    std::shared_ptr<SettingsStore> makeSettings();
    DictationFlowCollaborators collaborators();
    std::unique_ptr<OverlayWindow> makeOverlay(OverlayViewModel &model);
    ControlCommands::Program controlledProgram();
    void openStudioIfItIsNeeded();
    void openStudioAtStartPage();
    void openStudioByItself(const std::function<void()> &open);
    void betweenDictations(std::function<void()> work);

    const LaunchOptions launch;
    const BundleInfo bundle;
    Adapters adapters;
    GuardedHttpClient ollamaClient { adapters.http, adapters.listeners };
    std::shared_ptr<SettingsStore> settings;
    std::shared_ptr<TranscriptionHistory> history;
    std::shared_ptr<GlobalHotkeyManager> hotkey;
    std::shared_ptr<DictationFlowManager> flow;
    std::unique_ptr<Updates> updates;
    std::unique_ptr<Interface> interface;
    std::unique_ptr<ControlCommands> control;
};

void Composition::Parts::start() {
    settings = makeSettings();
    history
        = std::make_shared<TranscriptionHistory>(adapters.clock, adapters.fileManager, adapters.fileWriter);
    flow = DictationFlowManager::create(
        collaborators(), { adapters.clock, adapters.fileManager, adapters.application }, settings);
    updates = std::make_unique<Updates>(adapters, bundle, *settings,
        [this](std::function<void()> work) { betweenDictations(std::move(work)); });
    interface = std::make_unique<Interface>(
        Interface::Program { adapters, flow, history, updates->updater(), launch.quit });
    control = std::make_unique<ControlCommands>(controlledProgram(), adapters.remoteControl);
    // After the key listens: a window takes its time.
    adapters.clock.post([this] { openStudioIfItIsNeeded(); });
}

std::shared_ptr<SettingsStore> Composition::Parts::makeSettings() {
    StartingModel::choose(
        adapters.defaults, { adapters.fileManager, bundle }, StartingModel::url(bundle.bundleURL));
    return std::make_shared<SettingsStore>(adapters.defaults, adapters.fileManager, adapters.clock, bundle);
}

DictationFlowCollaborators Composition::Parts::collaborators() {
    DictationFlowCollaborators made;
    hotkey = std::make_shared<GlobalHotkeyManager>(GlobalHotkeyManager::Platform {
        adapters.taps, adapters.accessibility, adapters.sessionLock, adapters.clock });
    made.hotkeyManager = hotkey;
    made.liveCapture = std::make_shared<LiveAudioCapture>(LiveAudioCapture::Platform { adapters.audioEngine,
        adapters.audioFiles, adapters.microphone, adapters.fileManager, adapters.clock });
    made.recorder = std::make_shared<AudioRecorder>(adapters.microphone, adapters.recorders);
    made.adaptiveTranscriptionService = std::make_shared<AdaptiveTranscriptionService>(
        AdaptiveTranscriptionService::Options { .fileManager = adapters.fileManager,
            .transcribeOperation
            = AdaptiveTranscriptionService::defaultTranscribeOperation(adapters.processes, adapters.clock) });
    made.pasteService = std::make_shared<SystemPasteService>(
        adapters.pasteboard, adapters.keystroke, adapters.frontmost, adapters.clock);
    made.transitionSoundPlayer = std::make_shared<ProcessingTransitionSoundPlayer>(adapters.sounds);
    made.history = history;
    made.fallbackRefiner = std::make_shared<RuleBasedRefiner>();
    made.makeOverlayPanel = [this] {
        return std::make_shared<OverlayPanelController>(
            [this](OverlayViewModel &model) { return makeOverlay(model); });
    };
    made.makeOllamaRefiner = [this](OllamaConfiguration configuration) {
        return std::make_shared<OllamaRefiner>(ollamaClient, std::move(configuration));
    };
    made.makeRetentionSweeper = [this](FileManager &files) {
        return std::make_shared<AudioRetentionSweeper>(files, adapters.fileListing, adapters.clock);
    };
    made.removeRecording = [this](const FileURL &url) { adapters.fileListing.removeItem(url); };
    return made;
}

std::unique_ptr<OverlayWindow> Composition::Parts::makeOverlay(OverlayViewModel &model) {
    auto overlay = std::make_unique<QuickOverlayWindow>(model, adapters.floatingWindows);
    new ViewAppearance(*overlay->view().engine(), *settings, adapters.look);
    return overlay;
}

ControlCommands::Program Composition::Parts::controlledProgram() {
    return { .flow = flow,
        .hotkey = hotkey,
        .clock = adapters.clock,
        .showStudio = [this] { openStudioByItself([this] { interface->openStudio(); }); },
        .showSettings
        = [this] { openStudioByItself([this] { interface->openStudio(StudioDestination::Settings); }); },
        .quit = launch.quit,
        .methods = [this] { return diagnosis(adapters, *settings); },
        .version = bundle.infoDictionary.value(QStringLiteral("CFBundleShortVersionString")).toString() };
}

void Composition::Parts::openStudioIfItIsNeeded() {
    if (settings->shouldShowOnboardingReminder())
        openStudioAtStartPage();
    else
        ::launch(openIfOutOfReach(
            adapters.clock, adapters.loginSession, [this] { return interface->isInReach(); },
            [this] {
                logLine(QStringLiteral("Tolmi: there is no sign of it in a panel, because ")
                    + interface->statusItemAvailability().reason);
                openStudioAtStartPage();
            }));
}

void Composition::Parts::openStudioAtStartPage() {
    openStudioByItself([this] { interface->openStudio(StudioDestination::CommandCenter); });
}

/// What takes long is done before the key is looked at, so that hardly a press can come between that and the
/// window.
void Composition::Parts::openStudioByItself(const std::function<void()> &open) {
    interface->prepareStudio();
    betweenDictations(open);
}

void Composition::Parts::betweenDictations(std::function<void()> work) {
    const auto isUnderWay = [this] { return hotkey->isHeld() || flow->state().isProcessing(); };
    ::launch(runBetweenDictations(isUnderWay, adapters.clock, std::move(work)));
}

Composition::Composition(LaunchOptions launch)
    : m_parts(std::make_unique<Parts>(std::move(launch))) { }

Composition::~Composition() = default;

bool Composition::start() {
    const bool isFirst = m_parts->adapters.instance.claim([parts = m_parts.get()] {
        if (parts->interface)
            parts->openStudioByItself([parts] { parts->interface->openStudio(); });
    });
    if (isFirst)
        m_parts->start();
    return isFirst;
}

void Composition::settle() {
    // Who ends the session waits no longer than two seconds or so, and then kills.
    m_parts->adapters.fileWriter.limitWaiting(std::chrono::milliseconds(1500));
    m_parts->adapters.processes.terminateAll();
    m_parts->adapters.pasteboard.handOver();
    m_parts->adapters.defaults.flush();
    m_parts->history->waitUntilWritten();
}
