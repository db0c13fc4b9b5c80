#include "Main/Composition.h"

#include "Main/BundleInformation.h"
#include "Platform/Desktop/FileUserDefaults.h"
#include "Platform/Desktop/LocalSocketInstance.h"
#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Desktop/QtHttpClient.h"
#include "Platform/Desktop/QtStatusItem.h"
#include "Platform/Desktop/QtSystemSounds.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Linux/InjectedKeys.h"
#include "Platform/Linux/LinuxAtomicFileWriter.h"
#include "Platform/Linux/LinuxFileListing.h"
#include "Platform/Linux/LinuxFileManager.h"
#include "Platform/Linux/LinuxProcess.h"
#include "Platform/Linux/PortalDesktopLook.h"
#include "Platform/Linux/PulseAudioEngine.h"
#include "Platform/Linux/PulseConnection.h"
#include "Platform/Linux/PulseFileRecorder.h"
#include "Platform/Linux/PulseMicrophonePermission.h"
#include "Platform/Linux/X11AccessibilityRight.h"
#include "Platform/Linux/X11Application.h"
#include "Platform/Linux/X11EventTap.h"
#include "Platform/Linux/X11FrontmostApplication.h"
#include "Platform/Linux/X11OverlayWindowSystem.h"
#include "Platform/Linux/X11PasteKeystroke.h"
#include "Platform/Linux/X11Pasteboard.h"
#include "Platform/Log.h"
#include "TolmiApp/AdaptiveTranscriptionService.h"
#include "TolmiApp/AudioRecorder.h"
#include "TolmiApp/AudioRetentionSweeper.h"
#include "TolmiApp/DictationFlowManager.h"
#include "TolmiApp/GlobalHotkeyManager.h"
#include "TolmiApp/LiveAudioCapture.h"
#include "TolmiApp/OverlayPanel.h"
#include "TolmiApp/ProcessingTransitionSoundPlayer.h"
#include "TolmiApp/QuickOverlayWindow.h"
#include "TolmiApp/QuickStudioWindow.h"
#include "TolmiApp/SettingsStore.h"
#include "TolmiApp/StartingModel.h"
#include "TolmiApp/StatusItemController.h"
#include "TolmiApp/StudioRouting.h"
#include "TolmiApp/SystemPasteService.h"
#include "TolmiApp/TolmiStudioWindowModel.h"
#include "TolmiApp/TranscriptionHistory.h"
#include "TolmiApp/ViewAppearance.h"
#include "TolmiCore/OllamaRefiner.h"
#include "TolmiCore/RuleBasedRefiner.h"

#include <QCoreApplication>
#include <QIcon>
#include <QQmlEngine>
#include <QQuickView>

namespace {
BundleInfo bundleInfo(const char *programArgument) {
    return { QString::fromLocal8Bit(programArgument), FileURL(QCoreApplication::applicationDirPath()),
        bundleInformation() };
}

void logHow(const QString &reason) {
    logLine(QStringLiteral("Tolmi: the key and the paste do not work: ") + reason);
}
} // namespace

/// Declared in the order of construction: whatever is named lower uses what is named above it.
struct Composition::Parts {
    explicit Parts(Surroundings surroundings)
        : bundle(bundleInfo(surroundings.programArgument))
        , quit(std::move(surroundings.quit))
        , startsInTray(surroundings.startsInTray)
        , fileWriter(mode_t(surroundings.usersMask)) { }

    DictationFlowCollaborators collaborators();
    std::shared_ptr<SettingsStore> makeSettings();
    std::unique_ptr<OverlayWindow> makeOverlay(OverlayViewModel &model);
    void start();
    void makeStudio();
    void makeStatusItem();
    void openStudio(StudioDestination destination);
    void openStudioIfItIsNeeded();

    BundleInfo bundle;
    std::function<void()> quit;
    bool startsInTray;

    // platform
    MainLoopClock clock;
    PortalDesktopLook look;
    X11Application application { look };
    LinuxFolders folders = LinuxFolders::ofThisProcess();
    LinuxFileManager fileManager { folders };
    LinuxFileListing fileListing;
    LinuxAtomicFileWriter fileWriter;
    LinuxProcessLauncher processes;
    FileUserDefaults defaults { settingsFileURL(folders, fileManager), fileManager, fileWriter };
    LocalSocketInstance instance { fileManager.temporaryDirectory() };
    QtHttpClient http { clock };
    QtSystemSounds sounds;
    PulseConnection soundServer;
    PulseAudioEngine audioEngine { soundServer };
    PulseMicrophonePermission microphone { soundServer, clock };
    SndFileStore audioFiles;
    PulseFileRecorderFactory recorders { { soundServer, audioFiles } };
    std::shared_ptr<InjectedKeys> injectedKeys = std::make_shared<InjectedKeys>();
    X11EventTapFactory taps { injectedKeys };
    X11AccessibilityRight accessibility { logHow };
    X11PasteKeystroke keystroke { injectedKeys };
    X11FrontmostApplication frontmost { DesktopEntries::ofThisDesktop() };
    X11Pasteboard pasteboard;
    X11OverlayWindowSystem overlayWindows;

    // program
    std::shared_ptr<SettingsStore> settings;
    std::shared_ptr<DictationFlowManager> flow;
    StudioRouter router { application };
    std::unique_ptr<TolmiStudioWindowModel> studioModel;
    std::unique_ptr<QuickStudioWindow> studio;
    std::unique_ptr<QtStatusItem> statusItem;
    std::unique_ptr<StatusItemController> status;
};

DictationFlowCollaborators Composition::Parts::collaborators() {
    DictationFlowCollaborators made;
    made.hotkeyManager = std::make_shared<GlobalHotkeyManager>(taps, accessibility, clock);
    made.liveCapture = std::make_shared<LiveAudioCapture>(
        LiveAudioCapture::Platform { audioEngine, audioFiles, microphone, fileManager });
    made.recorder = std::make_shared<AudioRecorder>(microphone, recorders);
    made.adaptiveTranscriptionService = std::make_shared<AdaptiveTranscriptionService>(
        AdaptiveTranscriptionService::Options { .fileManager = fileManager,
            .transcribeOperation
            = AdaptiveTranscriptionService::defaultTranscribeOperation(processes, clock) });
    made.pasteService = std::make_shared<SystemPasteService>(pasteboard, keystroke, frontmost, clock);
    made.transitionSoundPlayer = std::make_shared<ProcessingTransitionSoundPlayer>(sounds);
    made.history = std::make_shared<TranscriptionHistory>(clock, fileManager, fileWriter);
    made.fallbackRefiner = std::make_shared<RuleBasedRefiner>();
    made.makeOverlayPanel = [this] {
        return std::make_shared<OverlayPanelController>(
            [this](OverlayViewModel &model) { return makeOverlay(model); });
    };
    made.makeOllamaRefiner = [this](OllamaConfiguration configuration) {
        return std::make_shared<OllamaRefiner>(http, std::move(configuration));
    };
    made.makeRetentionSweeper = [this](FileManager &files) {
        return std::make_shared<AudioRetentionSweeper>(files, fileListing, clock);
    };
    return made;
}

std::shared_ptr<SettingsStore> Composition::Parts::makeSettings() {
    StartingModel::choose(defaults, { fileManager, bundle }, StartingModel::url(bundle.bundleURL));
    return std::make_shared<SettingsStore>(defaults, fileManager, clock, bundle);
}

std::unique_ptr<OverlayWindow> Composition::Parts::makeOverlay(OverlayViewModel &model) {
    auto overlay = std::make_unique<QuickOverlayWindow>(model, overlayWindows);
    new ViewAppearance(*overlay->view().engine(), *settings, look);
    return overlay;
}

void Composition::Parts::start() {
    settings = makeSettings();
    flow = DictationFlowManager::create(collaborators(), { clock, fileManager, application }, settings);
    makeStudio();
    makeStatusItem();
    // After the key listens: a window takes its time.
    clock.post([this] { openStudioIfItIsNeeded(); });
}

void Composition::Parts::makeStudio() {
    studioModel = std::make_unique<TolmiStudioWindowModel>(
        *settings, router, TolmiStudioWindowModel::Content { .quit = quit });
    studio = std::make_unique<QuickStudioWindow>(*studioModel, *settings, look);
}

void Composition::Parts::makeStatusItem() {
    statusItem = std::make_unique<QtStatusItem>(QIcon(QStringLiteral(":/AppIcon.png")));
    status = std::make_unique<StatusItemController>(*statusItem, flow,
        StatusItemController::Actions {
            .openStudio = [this] { openStudio(StudioDestination::CommandCenter); },
            .openSettings = [this] { openStudio(StudioDestination::Settings); },
            .quit = quit });
}

void Composition::Parts::openStudio(StudioDestination destination) {
    router.open(destination, [this](const QString &id) {
        if (id == TolmiWindowID::studio)
            studio->show();
    });
}

void Composition::Parts::openStudioIfItIsNeeded() {
    const Availability tray = statusItem->availability();
    if (!tray.isAvailable())
        logLine(QStringLiteral("Tolmi: there is no sign of it in a panel, because ") + tray.reason);
    if (!startsInTray && (settings->shouldShowOnboardingReminder() || !tray.isAvailable()))
        openStudio(StudioDestination::CommandCenter);
}

Composition::Composition(Surroundings surroundings)
    : m_parts(std::make_unique<Parts>(std::move(surroundings))) { }

Composition::~Composition() = default;

bool Composition::start() {
    const bool isFirst = m_parts->instance.claim([parts = m_parts.get()] {
        if (parts->studio)
            parts->openStudio(parts->router.destination());
    });
    if (isFirst)
        m_parts->start();
    return isFirst;
}

void Composition::settle() {
    m_parts->pasteboard.handOver();
    m_parts->defaults.flush();
}
