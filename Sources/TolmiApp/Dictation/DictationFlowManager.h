#pragma once

#include "Foundation/ObservableObject.h"
#include "Foundation/SerialQueue.h"
#include "TolmiApp/Audio/AudioCacheStore.h"
#include "TolmiApp/Dictation/DictationFlowCollaborators.h"
#include "TolmiApp/Settings/AppAppearance.h"

#include <memory>
#include <optional>

class SettingsStore;

/// One dictation from the key press to the paste: drives every collaborator and publishes the state that all
/// views show. Main thread only.
///
/// The two long operations keep the object alive while they run, the metering loop while it records, and the
/// reset of an error for its three seconds; every other task and observer ends quietly when it is gone.
class DictationFlowManager final : public ObservableObject,
                                   public std::enable_shared_from_this<DictationFlowManager> {
    Q_OBJECT

    /// What the flow is doing.
    TOLMI_PUBLISHED_READONLY(DictationState, state, publishState)
    /// Final text of the last dictation; may be empty.
    TOLMI_PUBLISHED_READONLY(QString, lastTranscript, publishLastTranscript)
    /// Whether the program may watch and post keys.
    TOLMI_PUBLISHED_READONLY(bool, accessibilityGranted, publishAccessibilityGranted)
    /// Smoothed level of the voice, 0 to 1.
    TOLMI_PUBLISHED_READONLY(double, audioLevel, publishAudioLevel)
    /// Highest level that the live capture has seen, 0 to 1; 0 while the flow is idle.
    TOLMI_PUBLISHED_READONLY(double, currentPreRollPeak, publishCurrentPreRollPeak)
    /// Score of the first transcription pass of the last dictation, 0 to 1.
    TOLMI_PUBLISHED_READONLY(double, firstPassScore, publishFirstPassScore)
    /// Whether the last dictation used a second transcription pass.
    TOLMI_PUBLISHED_READONLY(bool, usedFallback, publishUsedFallback)

public:
    /// A flow that sets itself up in a later turn of the main loop.
    static std::shared_ptr<DictationFlowManager> create(DictationFlowCollaborators collaborators,
        DictationFlowPlatform platform, std::shared_ptr<SettingsStore> settings);

    /// Connects the hotkey and readies everything for the first dictation. Only the first call acts.
    void setup();

    /// Starts a recording. Only the idle and the done state act, tested before the permission is awaited.
    Task<> startDictation();

    /// Ends the recording, transcribes, refines, pastes and stores it. Only the recording state acts.
    Task<> stopAndProcess();

    /// Throws the recording away that the latest call of startDictation() asked for, also while it is still
    /// about to begin: nothing is processed, and no entry is made. A recording that began otherwise stays.
    void discardRecording();

    /// Builds the Ollama refiner from the present settings, or lets go of it.
    void configureRefiner();

    /// What the user has set; lives as long as the flow.
    SettingsStore &settings() const { return *m_settings; }

    /// Asks for the right to watch and post keys, and looks for its grant for about twenty seconds.
    void requestAccessibility();

Q_SIGNALS:
    /// The flow has looked at its rights anew, as it does whenever the program comes to the front. Those that
    /// it does not keep may have been given or taken too.
    void rightsChecked();

private:
    enum class ActiveCaptureBackend {
        LivePreRoll,
        LegacyRecorder,
    };
    struct MeteringTask {
        bool isCancelled = false;
    };
    /// A recording from the moment that it is asked for.
    struct RequestedRecording {
        /// Whether it must not begin any more.
        bool isDiscarded = false;
        /// Absent until it has begun. Kept here as well because the end of the dictation before, which may
        /// come later, clears those of the flow.
        std::optional<FileURL> url;
        std::optional<ActiveCaptureBackend> backend;
    };

    DictationFlowManager(DictationFlowCollaborators collaborators, DictationFlowPlatform platform,
        std::shared_ptr<SettingsStore> settings);

    void observeSettings();
    void observeActivation();
    std::function<void()> startingTask(Task<> (DictationFlowManager::*operation)());
    std::function<void()> discardingRecording();
    void updateState(const DictationState &state);
    void fail(const QString &message);
    void scheduleResetAfterError();
    static Task<> resetAfterError(std::shared_ptr<DictationFlowManager> manager);
    void syncProcessingTransitionSound();
    void applyAppAppearance(AppAppearance appearance);
    void refreshAccessibilityAndHotkeyState();
    static Task<> pollAccessibility(std::weak_ptr<DictationFlowManager> weakManager, Clock *clock);
    void runAudioRetentionSweep();
    OverlayPanel &overlayPanel();

    void removeRecording(const FileURL &url);
    std::optional<FileURL> openRecording();
    void startRecording(const FileURL &url);
    void startMetering();
    void stopMetering(bool resetPeak);
    static Task<> meter(
        std::shared_ptr<DictationFlowManager> manager, std::shared_ptr<const MeteringTask> task);
    void sampleLevel();
    double currentLevel();
    void setAudioLevel(double level);

    void stopActiveCapture();
    AdaptiveTranscriptionRequest transcriptionRequest(const FileURL &audioFileURL) const;
    Task<std::optional<AdaptiveTranscriptionOutcome>> transcribe(FileURL audioFileURL);
    Task<QString> refineIfEnabled(QString text);
    void pasteAndStore(const AdaptiveTranscriptionOutcome &outcome, const QString &finalText,
        double durationSeconds, const FileURL &audioFileURL);
    Task<> showDone();

    const DictationFlowCollaborators m_collaborators;
    const DictationFlowPlatform m_platform;
    const std::shared_ptr<SettingsStore> m_settings;
    const AudioCacheStore m_audioCacheStore;
    std::shared_ptr<OverlayPanel> m_overlayPanel;
    std::shared_ptr<TextRefiner> m_refiner;
    /// The file of the capture in progress.
    std::optional<FileURL> m_currentRecordingURL;
    std::optional<ActiveCaptureBackend> m_activeCaptureBackend;
    /// What the latest start asked for; absent when it was refused.
    std::shared_ptr<RequestedRecording> m_requestedRecording;
    /// How many recordings were discarded while they ran.
    int m_discardCount = 0;
    /// Highest raw level of this capture.
    double m_peakRecordingLevel = 0;
    std::shared_ptr<MeteringTask> m_meteringTask;
    bool m_isSetUp = false;
    /// Last, so that a sweep in progress ends before anything else goes.
    SerialQueue m_maintenanceQueue;
};
