#pragma once

#include "Foundation/Log.h"
#include "Platform/Desktop/FileUserDefaults.h"
#include "Platform/Desktop/LocalSocketInstance.h"
#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Desktop/QtAudioPlayers.h"
#include "Platform/Desktop/QtHttpClient.h"
#include "Platform/Desktop/QtOpenPanel.h"
#include "Platform/Desktop/QtSavePanel.h"
#include "Platform/Desktop/QtSystemSounds.h"
#include "Platform/Desktop/SndFileStore.h"
#include "Platform/Desktop/SodiumSignatureVerifier.h"
#include "Platform/Linux/Desktop/DBusFileViewer.h"
#include "Platform/Linux/Desktop/PortalDesktopLook.h"
#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileListing.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "Platform/Linux/Files/LinuxProcess.h"
#include "Platform/Linux/Pulse/PulseAudioEngine.h"
#include "Platform/Linux/Pulse/PulseConnection.h"
#include "Platform/Linux/Pulse/PulseFileRecorder.h"
#include "Platform/Linux/Pulse/PulseMicrophonePermission.h"
#include "Platform/Linux/X11/InjectedKeys.h"
#include "Platform/Linux/X11/X11AccessibilityRight.h"
#include "Platform/Linux/X11/X11Application.h"
#include "Platform/Linux/X11/X11EventTap.h"
#include "Platform/Linux/X11/X11FloatingWindows.h"
#include "Platform/Linux/X11/X11FrontmostApplication.h"
#include "Platform/Linux/X11/X11PasteKeystroke.h"
#include "Platform/Linux/X11/X11Pasteboard.h"

/// What this desktop gives for every operation that the program asks of a system. Declared in the order of
/// construction: whatever is named lower uses what is named above it.
struct Adapters {
    /// `usersMask` is the umask that the user's own files follow.
    explicit Adapters(mode_t usersMask)
        : fileWriter(usersMask) { }

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
    SodiumSignatureVerifier signatures;
    QtSystemSounds sounds;
    PulseConnection soundServer;
    PulseAudioEngine audioEngine { soundServer };
    PulseMicrophonePermission microphone { soundServer, clock };
    SndFileStore audioFiles;
    PulseFileRecorderFactory recorders { { soundServer, audioFiles } };
    std::shared_ptr<InjectedKeys> injectedKeys = std::make_shared<InjectedKeys>();
    X11EventTapFactory taps { injectedKeys };
    X11AccessibilityRight accessibility { [](const QString &reason) {
        logLine(QStringLiteral("Tolmi: the key and the paste do not work: ") + reason);
    } };
    X11PasteKeystroke keystroke { injectedKeys };
    X11FrontmostApplication frontmost { DesktopEntries::ofThisDesktop() };
    X11Pasteboard pasteboard;
    X11FloatingWindows floatingWindows;
    QtAudioPlayers audioPlayers;
    DBusFileViewer fileViewer;
    QtOpenPanel openPanel;
    QtSavePanel savePanel;
};
