#pragma once

#include "TolmiApp/Contracts/FlowCollaborators.h"
#include "TolmiCore/OllamaConfiguration.h"
#include "TolmiCore/TextRefiner.h"

#include <memory>

class Application;
class Clock;
class FileManager;

/// Everything that the flow owns and drives, each under the name of its contract or of its service. Every
/// member is set.
struct DictationFlowCollaborators {
    std::shared_ptr<HotkeyManager> hotkeyManager;
    std::shared_ptr<LiveCapture> liveCapture;
    std::shared_ptr<Recorder> recorder;
    std::shared_ptr<TranscriptionService> adaptiveTranscriptionService;
    std::shared_ptr<PasteService> pasteService;
    std::shared_ptr<TransitionSoundPlayer> transitionSoundPlayer;
    std::shared_ptr<DictationHistory> history;
    /// Refines when no Ollama refiner is configured or when it has failed.
    std::shared_ptr<TextRefiner> fallbackRefiner;
    /// Called once, at the first use of the overlay.
    std::function<std::shared_ptr<OverlayPanel>()> makeOverlayPanel;
    std::function<std::shared_ptr<TextRefiner>(OllamaConfiguration)> makeOllamaRefiner;
    /// Called on the maintenance queue, for each sweep.
    std::function<std::shared_ptr<RetentionSweeper>(FileManager &)> makeRetentionSweeper;
    /// Removes the file of a discarded recording; throws what keeps it from that. Called on the maintenance
    /// queue.
    std::function<void(const FileURL &)> removeRecording;
};

/// What the flow asks of the platform itself. All of it outlives the flow.
struct DictationFlowPlatform {
    Clock &clock;
    FileManager &fileManager;
    Application &application;
};
