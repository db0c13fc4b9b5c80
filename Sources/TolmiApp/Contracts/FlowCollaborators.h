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

    /// Called on the main thread when the key goes down and when it comes up.
    std::function<void()> onKeyDown;
    std::function<void()> onKeyUp;
    /// Called on the main thread when another key goes down soon after the key, which is still down: the
    /// press was not meant for a dictation.
    std::function<void()> onChord;

    /// Whether the right to watch and post keys is there; never asks the user.
    virtual bool checkAccessibility() = 0;
    /// Lets the system ask the user for the right.
    virtual void promptForAccessibility() = 0;
    /// Opens the system's settings where the right is granted.
    virtual void openAccessibilitySettings() = 0;
    /// Watches the key, anew if it is being watched already.
    virtual void start() = 0;
    /// Stops watching. A key that is held never gets its key-up.
    virtual void stop() = 0;
    /// Whether a key-down has been reported without its key-up.
    virtual bool isHeld() const = 0;
};

/// Capture that is always warm and starts with the sound before the key press.
class LiveCapture {
public:
    virtual ~LiveCapture() = default;

    /// Called on the main thread when a recording has been without any sound for three seconds; it goes on.
    std::function<void()> onSoundLost;

    /// Starts the engine in the background if the microphone may be used.
    virtual void warmupIfAuthorized() = 0;
    /// Suspends until sound arrives, two seconds at most. Throws what keeps it from arriving.
    virtual Task<> prepareToRecord() = 0;
    /// Throws what keeps the recording from starting.
    virtual void startRecording(const FileURL &url) = 0;
    virtual void stopRecording() = 0;
    /// Level of the latest sound, 0 to 1.
    virtual double currentLevel() = 0;
    /// Highest level since the object was made.
    virtual double currentPreRollPeak() = 0;
};

/// Records from the key press on, where the live capture does not start; and the microphone permission.
class Recorder {
public:
    virtual ~Recorder() = default;

    /// Whether the microphone may be used; asks the user if that was not settled yet.
    virtual Task<bool> requestPermission() = 0;
    /// Throws AudioRecorderError or a system error.
    virtual void startRecording(const FileURL &url) = 0;
    virtual void stopRecording() = 0;
    /// Level of the latest sound, 0 to 1.
    virtual double currentLevel() = 0;
};

/// What a finished recording is transcribed with.
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

/// What the transcription of a recording gave.
struct AdaptiveTranscriptionOutcome {
    /// May be empty.
    QString text;
    /// Score of the first pass, 0 to 1.
    double firstPassScore = 0;
    /// Whether a second pass was started, whatever came of it.
    bool usedFallback = false;
    /// The pass whose text `text` is.
    QualityPass qualityPass = QualityPass::Single;
};

/// Turns a recording into a clean transcript, in one pass or two.
class TranscriptionService {
public:
    virtual ~TranscriptionService() = default;

    /// `onFallbackStart` runs on the main thread before a second pass starts. Throws what keeps it from a
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

    /// Told as soon as a paste is to be expected. Waits for nothing.
    virtual void prepare() = 0;
    /// Blocks the main thread for the time that the clipboard needs. Cannot fail.
    virtual PasteTargetCapture paste(const QString &text, AppLanguage language) = 0;
    /// Whether the last paste posted its command, which it does not do when the text is not on the clipboard.
    virtual bool hasPosted() const = 0;
};

/// The looping sound while a dictation is processed.
class TransitionSoundPlayer {
public:
    virtual ~TransitionSoundPlayer() = default;

    /// Brings the sound in step with the state; may be called at any time.
    virtual void sync(const DictationState &state, ProcessingTransitionSound selection, double volume) = 0;
};

/// The overlay that is shown over the desktop during a dictation.
class OverlayPanel {
public:
    virtual ~OverlayPanel() = default;

    virtual void show(const DictationState &state, AppLanguage language) = 0;
    virtual void hide() = 0;
    /// Level of the voice, 0 to 1.
    virtual void updateAudioLevel(double level) = 0;
};

/// Keeps the record of finished dictations.
class DictationHistory {
public:
    virtual ~DictationHistory() = default;

    virtual void add(const FinishedDictation &dictation) = 0;
};

/// What one sweep of the recordings did.
struct AudioRetentionSweepResult {
    /// Files that were really removed.
    qint64 deletedFileCount = 0;
    /// Their sizes together.
    qint64 deletedBytes = 0;
    /// The sizes of the files that are left, together.
    qint64 remainingBytes = 0;

    friend bool operator==(const AudioRetentionSweepResult &, const AudioRetentionSweepResult &) = default;
};

/// Removes old recordings.
class RetentionSweeper {
public:
    virtual ~RetentionSweeper() = default;

    /// Runs on the maintenance queue. Throws what keeps it from sweeping.
    virtual AudioRetentionSweepResult sweep(
        const FileURL &directoryURL, qint64 retentionHours, qint64 maxSizeMB)
        = 0;
};
