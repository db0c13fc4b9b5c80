#include "Main/Composition.h"

#include "Main/BundleInformation.h"
#include "Platform/Desktop/FileUserDefaults.h"
#include "Platform/Desktop/LocalSocketInstance.h"
#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Desktop/QtApplication.h"
#include "Platform/Desktop/QtHttpClient.h"
#include "Platform/Desktop/QtStatusItem.h"
#include "Platform/Desktop/QtSystemSounds.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Linux/InjectedKeys.h"
#include "Platform/Linux/LinuxAtomicFileWriter.h"
#include "Platform/Linux/LinuxFileListing.h"
#include "Platform/Linux/LinuxFileManager.h"
#include "Platform/Linux/LinuxProcess.h"
#include "Platform/Linux/PulseAudioEngine.h"
#include "Platform/Linux/PulseConnection.h"
#include "Platform/Linux/PulseFileRecorder.h"
#include "Platform/Linux/PulseMicrophonePermission.h"
#include "Platform/Linux/X11AccessibilityRight.h"
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
#include "TolmiApp/MenuBarPopupModel.h"
#include "TolmiApp/MenuBarPopupWindow.h"
#include "TolmiApp/OverlayPanel.h"
#include "TolmiApp/ProcessingTransitionSoundPlayer.h"
#include "TolmiApp/QuickOverlayWindow.h"
#include "TolmiApp/SettingsStore.h"
#include "TolmiApp/StartingModel.h"
#include "TolmiApp/StatusItemController.h"
#include "TolmiApp/SystemPasteService.h"
#include "TolmiApp/TranscriptionHistory.h"
#include "TolmiApp/ViewTexts.h"
#include "TolmiCore/OllamaRefiner.h"
#include "TolmiCore/RuleBasedRefiner.h"

#include <QCoreApplication>
#include <QGuiApplication>
#include <QIcon>
#include <QPalette>
#include <QQmlComponent>

namespace {
BundleInfo bundleInfo(const char *programArgument) {
    return { QString::fromLocal8Bit(programArgument), FileURL(QCoreApplication::applicationDirPath()),
        bundleInformation() };
}

void logHow(const QString &reason) {
    logLine(QStringLiteral("Tolmi: the key and the paste do not work: ") + reason);
}

/// Draws the windows of an engine in the look that is set.
void followAppearance(QQmlEngine &engine, const SettingsStore &settings) {
    QQmlComponent component(&engine);
    component.setData("import QtQml; import Tolmi; QtObject { property QtObject palette: TolmiPalette }", {});
    const std::unique_ptr<QObject> holder(component.create());
    auto *const palette = holder->property("palette").value<QObject *>();
    const auto apply = [palette] {
        const bool isDark = QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
        palette->setProperty("scheme", isDark ? 1 : 0);
    };
    QObject::connect(&settings, &SettingsStore::appearanceChanged, palette, apply);
    apply();
}

/// The popup with all that is made for it at the first press of the status item.
struct Popup {
    Popup(MenuBarPopupModel::Actions actions, std::shared_ptr<DictationFlowManager> flow,
        Pasteboard &pasteboard, OverlayWindowSystem &system, const Clock &clock)
        : model(flow, pasteboard, std::move(actions))
        , texts(flow->settings(), PlatformTexts::forLinux())
        , window({ model, texts, system, clock,
              [flow](QQmlEngine &engine) { followAppearance(engine, flow->settings()); } }) { }

    MenuBarPopupModel model;
    ViewTexts texts;
    MenuBarPopupWindow window;
};
} // namespace

/// Declared in the order of construction: whatever is named lower uses what is named above it.
struct Composition::Parts {
    explicit Parts(Surroundings surroundings)
        : bundle(bundleInfo(surroundings.programArgument))
        , quit(std::move(surroundings.quit))
        , fileWriter(mode_t(surroundings.usersMask)) { }

    DictationFlowCollaborators collaborators();
    std::shared_ptr<SettingsStore> makeSettings();
    void startFlow();
    void togglePopup();
    MenuBarPopupModel::Actions popupActions();

    BundleInfo bundle;
    std::function<void()> quit;

    // platform
    MainLoopClock clock;
    QtApplication application;
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
    std::shared_ptr<DictationFlowManager> flow;
    std::unique_ptr<QtStatusItem> statusItem;
    std::unique_ptr<StatusItemController> status;
    std::unique_ptr<Popup> popup;
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
        return std::make_shared<OverlayPanelController>([this](OverlayViewModel &model) {
            return std::make_unique<QuickOverlayWindow>(model, overlayWindows);
        });
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

void Composition::Parts::startFlow() {
    flow = DictationFlowManager::create(collaborators(), { clock, fileManager, application }, makeSettings());
    statusItem = std::make_unique<QtStatusItem>(QIcon(QStringLiteral(":/AppIcon.png")));
    status = std::make_unique<StatusItemController>(*statusItem, flow, quit);
    status->setPopup([this] { togglePopup(); });
    const Availability tray = statusItem->availability();
    if (!tray.isAvailable())
        logLine(QStringLiteral("Tolmi: there is no sign of it in a panel, because ") + tray.reason);
}

MenuBarPopupModel::Actions Composition::Parts::popupActions() {
    const auto nothing = [] {};
    return { .openCommandCenter = nothing,
        .openProfile = nothing,
        .openSettings = nothing,
        .checkForUpdates = nothing,
        .quit = quit };
}

void Composition::Parts::togglePopup() {
    if (!popup)
        popup = std::make_unique<Popup>(popupActions(), flow, pasteboard, overlayWindows, clock);
    popup->window.toggle(statusItem->geometry());
}

Composition::Composition(Surroundings surroundings)
    : m_parts(std::make_unique<Parts>(std::move(surroundings))) { }

Composition::~Composition() = default;

bool Composition::start() {
    const bool isFirst = m_parts->instance.claim([parts = m_parts.get()] {
        if (parts->status)
            parts->status->announce();
    });
    if (isFirst)
        m_parts->startFlow();
    return isFirst;
}

void Composition::settle() {
    m_parts->pasteboard.handOver();
    m_parts->defaults.flush();
}
