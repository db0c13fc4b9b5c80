#pragma once

#include "Foundation/Clock.h"
#include "Platform/AccessibilityRight.h"
#include "Platform/Application.h"
#include "Platform/AtomicFileWriter.h"
#include "Platform/AudioEngine.h"
#include "Platform/AudioFileRecorder.h"
#include "Platform/AudioFileStore.h"
#include "Platform/AudioPlayer.h"
#include "Platform/DesktopLook.h"
#include "Platform/EventTap.h"
#include "Platform/FileListing.h"
#include "Platform/FileManager.h"
#include "Platform/FileViewer.h"
#include "Platform/FloatingWindows.h"
#include "Platform/FrontmostApplication.h"
#include "Platform/HttpClient.h"
#include "Platform/LocalListeners.h"
#include "Platform/LoginSession.h"
#include "Platform/MicrophonePermission.h"
#include "Platform/OpenPanel.h"
#include "Platform/OperationMethod.h"
#include "Platform/PasteKeystroke.h"
#include "Platform/Pasteboard.h"
#include "Platform/Process.h"
#include "Platform/RemoteControl.h"
#include "Platform/SavePanel.h"
#include "Platform/SessionLock.h"
#include "Platform/SignatureVerifier.h"
#include "Platform/SingleInstance.h"
#include "Platform/StatusTray.h"
#include "Platform/SystemSound.h"
#include "Platform/UserDefaults.h"

#include <sys/types.h>

#include <memory>
#include <vector>

/// What this desktop gives for every operation that the program asks of a system. Which adapters stand behind
/// it is known in Adapters.cpp and WindowSystem.cpp alone.
struct Adapters {
    /// `usersMask` is the umask that the user's own files follow.
    explicit Adapters(mode_t usersMask);
    ~Adapters();

    Clock &clock;
    DesktopLook &look;
    SessionLock &sessionLock;
    LoginSession &loginSession;
    FileManager &fileManager;
    FileListing &fileListing;
    AtomicFileWriter &fileWriter;
    ProcessLauncher &processes;
    UserDefaults &defaults;
    SingleInstance &instance;
    RemoteControl &remoteControl;
    HttpClient &http;
    LocalListeners &listeners;
    SignatureVerifier &signatures;
    SystemSounds &sounds;
    AudioEngine &audioEngine;
    MicrophonePermission &microphone;
    AudioFileStore &audioFiles;
    AudioFileRecorderFactory &recorders;
    AudioPlayers &audioPlayers;
    FileViewer &fileViewer;
    OpenPanel &openPanel;
    SavePanel &savePanel;
    Application &application;
    EventTapFactory &taps;
    AccessibilityRight &accessibility;
    PasteKeystroke &keystroke;
    FrontmostApplication &frontmost;
    Pasteboard &pasteboard;
    FloatingWindows &floatingWindows;
    /// Every place that the desktop may have for the status item.
    const std::vector<StatusTray *> statusTrays;

    /// How key, paste, clipboard and overlay are done here.
    std::vector<OperationMethod> methods() const;

private:
    struct Made;
    explicit Adapters(std::unique_ptr<Made> made);

    const std::unique_ptr<Made> m_made;
};
