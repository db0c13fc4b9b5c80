#include "Main/Adapters.h"

#include "Foundation/Error.h"
#include "Foundation/Log.h"
#include "Main/WindowSystem.h"
#include "Platform/Desktop/FileUserDefaults.h"
#include "Platform/Desktop/LocalSocketInstance.h"
#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Desktop/QtHttpClient.h"
#include "Platform/Desktop/QtOpenPanel.h"
#include "Platform/Desktop/QtSavePanel.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Desktop/SodiumSignatureVerifier.h"
#include "Platform/Linux/Desktop/DBusFileViewer.h"
#include "Platform/Linux/Desktop/DBusRemoteControl.h"
#include "Platform/Linux/Desktop/DBusSessionLock.h"
#include "Platform/Linux/Desktop/DBusStatusTray.h"
#include "Platform/Linux/Desktop/PortalDesktopLook.h"
#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileListing.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Platform/Linux/Files/LinuxLocalListeners.h"
#include "Platform/Linux/Files/LinuxProcess.h"
#include "Platform/Linux/Pulse/PulseAudioEngine.h"
#include "Platform/Linux/Pulse/PulseAudioPlayers.h"
#include "Platform/Linux/Pulse/PulseConnection.h"
#include "Platform/Linux/Pulse/PulseFileRecorder.h"
#include "Platform/Linux/Pulse/PulseMicrophonePermission.h"
#include "Platform/Linux/Pulse/PulseSystemSounds.h"
#include "TolmiApp/Settings/ApplicationFolder.h"

namespace {
/// The program's folder, made where it is missing. A folder that cannot be made keeps nobody from starting.
FileURL dataFolder(FileManager &fileManager) {
    const FileURL folder = tolmiRootDirectoryURL(fileManager);
    try {
        fileManager.createDirectory(folder);
    } catch (const SystemError &error) {
        logLine(QStringLiteral("Tolmi: its folder cannot be made: ") + error.errorDescription());
    }
    return folder;
}
} // namespace

/// Declared in the order of construction: whatever is named lower uses what is named above it.
struct Adapters::Made {
    explicit Made(mode_t usersMask)
        : fileWriter(usersMask) { }

    MainLoopClock clock;
    PortalDesktopLook look;
    DBusSessionLock sessionLock;
    DBusStatusTray panel;
    LinuxFolders folders = LinuxFolders::ofThisProcess();
    LinuxFileManager fileManager { folders };
    LinuxFileListing fileListing;
    LinuxAtomicFileWriter fileWriter;
    LinuxProcessLauncher processes;
    FileUserDefaults defaults { settingsFileURL(folders, fileManager), fileManager, fileWriter };
    LocalSocketInstance instance { dataFolder(fileManager), fileManager.temporaryDirectory() };
    DBusRemoteControl remoteControl;
    QtHttpClient http { clock };
    LinuxLocalListeners listeners;
    SodiumSignatureVerifier signatures;
    PulseConnection soundServer;
    PulseSystemSounds sounds { soundServer };
    PulseAudioEngine audioEngine { soundServer };
    PulseMicrophonePermission microphone { soundServer, clock };
    SndFileStore audioFiles;
    PulseFileRecorderFactory recorders { { soundServer, audioFiles } };
    PulseAudioPlayers audioPlayers { soundServer };
    DBusFileViewer fileViewer;
    QtOpenPanel openPanel;
    QtSavePanel savePanel;
    WindowSystem windowSystem = WindowSystem::ofThisSession(look);
};

Adapters::Adapters(mode_t usersMask)
    : Adapters(std::make_unique<Made>(usersMask)) { }

Adapters::Adapters(std::unique_ptr<Made> made)
    : clock(made->clock)
    , look(made->look)
    , sessionLock(made->sessionLock)
    , loginSession(made->sessionLock)
    , fileManager(made->fileManager)
    , fileListing(made->fileListing)
    , fileWriter(made->fileWriter)
    , processes(made->processes)
    , defaults(made->defaults)
    , instance(made->instance)
    , remoteControl(made->remoteControl)
    , http(made->http)
    , listeners(made->listeners)
    , signatures(made->signatures)
    , sounds(made->sounds)
    , audioEngine(made->audioEngine)
    , microphone(made->microphone)
    , audioFiles(made->audioFiles)
    , recorders(made->recorders)
    , audioPlayers(made->audioPlayers)
    , fileViewer(made->fileViewer)
    , openPanel(made->openPanel)
    , savePanel(made->savePanel)
    , application(*made->windowSystem.application)
    , taps(*made->windowSystem.taps)
    , accessibility(*made->windowSystem.accessibility)
    , keystroke(*made->windowSystem.keystroke)
    , frontmost(*made->windowSystem.frontmost)
    , pasteboard(*made->windowSystem.pasteboard)
    , floatingWindows(*made->windowSystem.floatingWindows)
    , statusTrays { &made->panel, made->windowSystem.statusTray.get() }
    , m_made(std::move(made)) { }

Adapters::~Adapters() = default;

std::vector<OperationMethod> Adapters::methods() const {
    return m_made->windowSystem.methods();
}
