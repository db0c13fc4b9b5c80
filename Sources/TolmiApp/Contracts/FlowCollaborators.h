#pragma once

#include "Foundation/Date.h"
#include "Foundation/FileURL.h"
#include "Foundation/Task.h"
#include "TolmiApp/Contracts/DictationState.h"
#include "TolmiApp/Contracts/FinishedDictation.h"
#include "TolmiApp/Contracts/QualityPass.h"
#include "TolmiApp/Settings/AppLanguage.h"
#include "TolmiApp/Settings/DictationPerformanceMode.h"
#include "TolmiApp/Settings/ProcessingTransitionSound.h"
#include "TolmiApp/Settings/TranscriptionEngineOption.h"

#include <functional>
#include <optional>

/// The key that is held to dictate.
class HotkeyManager {
public:
    virtual ~HotkeyManager() = default;

    /// Called on the main thread when the key is pressed and released.
    std::function<void()> onKeyDown;
    std::function<void()> onKeyUp;
    /// Called on the main thread when another key is pressed soon after the key, which is still down, so the
    /// press was not meant to dictate.
    std::function<void()> onChord;

    /// Whether the right to watch and post keys is granted; never prompts the user.
    virtual bool checkAccessibility() = 0;
    /// Makes the system prompt the user for the right.
    virtual void promptForAccessibility() = 0;
    /// Opens the system setting that grants the right.
    virtual void openAccessibilitySettings() = 0;
    /// Starts, or restarts, watching the key.
    virtual void start() = 0;
    /// Stops watching. No key-up is reported for a key that is held.
    virtual void stop() = 0;
    /// Whether a key-down has been reported without its key-up.
    virtual bool isHeld() const = 0;
};

/// Capture that is always running, so that a recording includes the sound before the key press.
class LiveCapture {
public:
    virtual ~LiveCapture() = default;

    /// Called on the main thread when a recording has had no sound for three seconds. It continues.
    std::function<void()> onSoundLost;

    /// Starts the engine in the background if the microphone may be used.
    virtual void warmupIfAuthorized() = 0;
    /// Suspends until sound arrives, at most two seconds. Throws if none arrives.
    virtual Task<> prepareToRecord() = 0;
    /// Throws if the recording cannot start.
    virtual void startRecording(const FileURL &url) = 0;
    virtual void stopRecording() = 0;
    /// Level of the latest sound, 0 to 1.
    virtual double currentLevel() = 0;
    /// Highest level since construction.
    virtual double currentPreRollPeak() = 0;
};

/// Fallback that records from the key press on when live capture does not start; also requests the microphone
/// permission.
class Recorder {
public:
    virtual ~Recorder() = default;

    /// Whether the microphone may be used; prompts the user if undecided.
    virtual Task<bool> requestPermission() = 0;
    /// Throws AudioRecorderError or a system error.
    virtual void startRecording(const FileURL &url) = 0;
    virtual void stopRecording() = 0;
    /// Level of the latest sound, 0 to 1.
    virtual double currentLevel() = 0;
};

/// How to transcribe a finished recording.
struct AdaptiveTranscriptionRequest {
    FileURL audioFileURL;
    FileURL binaryURL;
    FileURL modelURL;
    QString language;
    FileURL outputDirectoryURL;
    TranscriptionEngineOption transcriptionEngine = TranscriptionEngineOption::WhisperCLI;
    DictationPerformanceMode performanceMode = DictationPerformanceMode::Faster;
    /// Peak level of the recording, 0 to 1.
    double peakLevel = 0;
};

/// The result of transcribing a recording.
struct AdaptiveTranscriptionOutcome {
    /// May be empty.
    QString text;
    /// Score of the first pass, 0 to 1.
    double firstPassScore = 0;
    /// Whether a second pass was started, successful or not.
    bool usedFallback = false;
    /// The pass that produced `text`.
    QualityPass qualityPass = QualityPass::Single;
};

/// Turns a recording into a clean transcript, in one pass or two.
class TranscriptionService {
public:
    virtual ~TranscriptionService() = default;

    /// `onFallbackStart` runs on the main thread before a second pass starts. Throws if there is no
    /// transcript.
    virtual Task<AdaptiveTranscriptionOutcome> transcribe(
        AdaptiveTranscriptionRequest request, std::function<void()> onFallbackStart)
        = 0;
};

/// The application that received a paste.
struct PasteTargetCapture {
    QString appName;
    std::optional<QString> bundleID;
    Date timestamp;

    friend bool operator==(const PasteTargetCapture &, const PasteTargetCapture &) = default;
};

/// Puts text into the front application.
class PasteService {
public:
    virtual ~PasteService() = default;

    /// Called as soon as a paste is expected. Never waits.
    virtual void prepare() = 0;
    /// Blocks the main thread while the clipboard is set. Never fails.
    virtual PasteTargetCapture paste(const QString &text, AppLanguage language) = 0;
    /// Whether the last paste posted its command; false if the text could not be put on the clipboard.
    virtual bool hasPosted() const = 0;
};

/// The looping sound while a dictation is processed.
class TransitionSoundPlayer {
public:
    virtual ~TransitionSoundPlayer() = default;

    /// Starts or stops the sound to match the state; may be called at any time.
    virtual void sync(const DictationState &state, ProcessingTransitionSound selection, double volume) = 0;
};

/// The overlay shown during a dictation.
class OverlayPanel {
public:
    virtual ~OverlayPanel() = default;

    virtual void show(const DictationState &state, AppLanguage language) = 0;
    virtual void hide() = 0;
    /// Sets the voice level, 0 to 1.
    virtual void updateAudioLevel(double level) = 0;
};

/// Stores finished dictations.
class DictationHistory {
public:
    virtual ~DictationHistory() = default;

    virtual void add(const FinishedDictation &dictation) = 0;
};

/// The result of one sweep of the recordings.
struct AudioRetentionSweepResult {
    /// Files actually removed.
    qint64 deletedFileCount = 0;
    /// Their total size.
    qint64 deletedBytes = 0;
    /// The total size of the remaining files.
    qint64 remainingBytes = 0;

    friend bool operator==(const AudioRetentionSweepResult &, const AudioRetentionSweepResult &) = default;
};

/// Removes old recordings.
class RetentionSweeper {
public:
    virtual ~RetentionSweeper() = default;

    /// Runs on the maintenance queue. Throws if the folder cannot be swept.
    virtual AudioRetentionSweepResult sweep(
        const FileURL &directoryURL, qint64 retentionHours, qint64 maxSizeMB)
        = 0;
};
