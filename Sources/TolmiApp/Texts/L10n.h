#pragma once

#include "TolmiApp/Contracts/DictationState.h"
#include "TolmiApp/Settings/AppAppearance.h"
#include "TolmiApp/Settings/AppLanguage.h"
#include "TolmiApp/Settings/DictationPerformanceMode.h"
#include "TolmiApp/Settings/ProcessingTransitionSound.h"
#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiApp/Settings/TranscriptionEngineOption.h"

#include <QObject>
#include <QString>

#include <optional>

/// Every text of the interface, in English and in Romanian. Nothing is read from disk; any thread may ask.
namespace L10n {
Q_NAMESPACE

/// The texts, grouped by the area that shows them. New ones get a line in the table at the same place.
enum class Key {
    appTitle,
    menuBarTitle,
    menuBarStudioLauncher,
    menuBarOpenStudio,
    menuBarSettings,
    menuBarQuit,
    menuBarAccessibilityRequired,
    menuBarGrantAccessHint,
    menuBarGrant,
    menuBarHold,
    menuBarToDictate,
    menuBarLastTranscript,
    menuBarCopy,
    menuBarUILanguage,
    menuBarTranscriptionLanguage,
    menuBarLLMRefine,
    menuBarCheckForUpdates,
    routeCommandCenter,
    routeProfile,
    routeDictationLive,
    routeHistory,
    routeTemplates,
    routeHealth,
    routeSettings,
    commandCenterTitle,
    commandCenterSubtitle,
    commandCenterDictation,
    commandCenterDictationHint,
    commandCenterOpenDictationLive,
    commandCenterStartRecording,
    commandCenterStopTranscribe,
    commandCenterHistory,
    commandCenterHistoryHint,
    commandCenterOpenHistory,
    commandCenterTemplates,
    commandCenterPresetOnly,
    commandCenterTemplatesHint,
    commandCenterOpenTemplates,
    commandCenterHealth,
    commandCenterRuntimeChecks,
    commandCenterHealthHint,
    commandCenterRunHealthChecks,
    commandCenterLastDestination,
    commandCenterOnboardingReminderTitle,
    commandCenterOnboardingReminderHint,
    commandCenterOnboardingContinue,
    dictationLiveTitle,
    dictationLiveHotkey,
    dictationLiveProcessing,
    dictationLiveLastTranscript,
    dictationLiveCopy,
    historySearchPrompt,
    historyExportFailed,
    commonOK,
    historyClearAllTitle,
    historyClearAllButton,
    historyCancel,
    historyClearAllMessage,
    historyExportSelected,
    historyExportAll,
    historyDeleteSelected,
    historyNoTranscriptions,
    historyNoResults,
    historyNoTranscriptionsHint,
    historyNoResultsHint,
    historyPinned,
    historyRecent,
    historyLanguagePrefix,
    historyRaw,
    historyRefined,
    historySelectToInspect,
    historyPreviewEmpty,
    historyPin,
    historyUnpin,
    historyDelete,
    historyExportPanelTitle,
    historyPastedTo,
    historyBundleID,
    historyPasteTime,
    historyNoPasteMetadata,
    historyAudioTitle,
    historyAudioPlay,
    historyAudioPause,
    historyAudioRevealInFinder,
    historyAudioUnavailable,
    historyAudioMissing,
    historyAudioPathLabel,
    historyAudioPlayFailedTitle,
    historyAudioPlayFailedMessage,
    historyExportEntryPrefix,
    historyExportTimestampLabel,
    historyExportLanguageLabel,
    historyExportPasteTargetAppLabel,
    historyExportPasteTargetBundleIDLabel,
    historyExportPasteTimestampLabel,
    historyExportRawLabel,
    historyExportRefinedLabel,
    templatesTitle,
    templatesSubtitle,
    templatesSelectedTranscript,
    templatesNoTranscript,
    templatesPreset,
    templatesApply,
    templatesPreview,
    templatesCopyOutput,
    templatesApplyHint,
    templateEmailClearTitle,
    templateEmailClearSubtitle,
    templateMeetingSummaryTitle,
    templateMeetingSummarySubtitle,
    templateActionItemsTitle,
    templateActionItemsSubtitle,
    templateCustomerReplyTitle,
    templateCustomerReplySubtitle,
    settingsGeneral,
    settingsEngine,
    settingsRefinement,
    settingsAppearanceSection,
    settingsAppearance,
    settingsAppearanceSystem,
    settingsAppearanceLight,
    settingsAppearanceDark,
    settingsLanguagesSection,
    settingsUILanguage,
    settingsTranscriptionLanguage,
    settingsHotkeySection,
    settingsPushToTalk,
    settingsRightOption,
    settingsUpdatesSection,
    settingsAutoCheckForUpdates,
    settingsCheckForUpdatesNow,
    settingsUpdatesNotConfiguredHint,
    settingsProfileSection,
    settingsProfileManagedInStudio,
    settingsOpenProfile,
    settingsDisplayName,
    settingsDisplayNamePlaceholder,
    settingsAvatar,
    settingsTranscriptionEngine,
    settingsEngineWhisperCLI,
    settingsWhisperSection,
    settingsBinaryPath,
    settingsModelPath,
    settingsPerformanceMode,
    settingsPerformanceFaster,
    settingsPerformanceMaxQuality,
    settingsTransitionSound,
    settingsTransitionSoundNone,
    settingsTransitionSoundHero,
    settingsTransitionSoundSubmarine,
    settingsTransitionSoundBlow,
    settingsTransitionSoundMorse,
    settingsTransitionSoundFunk,
    settingsTransitionSoundPop,
    settingsTransitionSoundBottle,
    settingsTransitionSoundFrog,
    settingsTransitionSoundPurr,
    settingsTransitionSoundSosumi,
    settingsTransitionSoundTink,
    settingsTransitionSoundGlass,
    settingsTransitionSoundBasso,
    settingsTransitionSoundPing,
    settingsTransitionSoundVolume,
    settingsTransitionSoundPreviewVolume,
    settingsTransitionSoundPreview,
    settingsLLMSection,
    settingsEnableRefinement,
    settingsOllamaEndpoint,
    settingsModel,
    settingsTimeoutSeconds,
    settingsSystemPrompt,
    settingsResetToDefault,
    settingsSystemPromptHint,
    healthTitle,
    healthSubtitle,
    healthRunChecksAgain,
    healthChecking,
    healthMicrophone,
    healthAccessibility,
    healthBinary,
    healthModel,
    healthOllama,
    healthGranted,
    healthReadyRecording,
    healthPermissionNotRequested,
    healthStartToPrompt,
    healthAccessDenied,
    healthEnableMicHint,
    healthUnknownStatus,
    healthRecheckPermissions,
    healthAccessibilityGrantedHint,
    healthAccessibilityMissing,
    healthGrantAccessibilityHint,
    healthBinaryFound,
    healthBinaryMissing,
    healthBinaryMissingHint,
    healthModelFound,
    healthModelMissing,
    healthModelMissingHint,
    healthOllamaDisabled,
    healthOllamaDisabledHint,
    healthInvalidEndpoint,
    healthInvalidEndpointHint,
    healthReachable,
    healthUnreachable,
    healthUnreachableHint,
    profileTitle,
    profileSubtitle,
    profileResumeOnboarding,
    profileIdentitySection,
    profileIdentityHint,
    profileAvatarSection,
    profileAvatarHint,
    profileUploadAvatar,
    profileRemoveAvatar,
    profileAvatarErrorTitle,
    profileAvatarErrorGeneric,
    profileAvatarErrorUnsupportedType,
    profileAvatarErrorTooLarge,
    profileAvatarErrorDecodeFailed,
    profileAvatarErrorWriteFailed,
    profileChecklistTitle,
    profileHealthScoreTitle,
    profileHealthRecommendations,
    profileHealthReadyMessage,
    profileRecommendationDisplayName,
    profileRecommendationAvatar,
    profileRecommendationMicrophone,
    profileRecommendationAccessibility,
    profileRecommendationDictation,
    onboardingTitle,
    onboardingSubtitle,
    onboardingSkip,
    onboardingBack,
    onboardingContinue,
    onboardingFinish,
    onboardingStepProfileTitle,
    onboardingStepProfileHint,
    onboardingStepPermissionsTitle,
    onboardingStepPermissionsHint,
    onboardingStepDictationTitle,
    onboardingStepDictationHint,
    onboardingGrantMicrophone,
    onboardingGrantAccessibility,
    onboardingDictationDone,
    onboardingDictationPending,
    stateReady,
    stateRecording,
    stateTranscribing,
    stateOptimizingQuality,
    stateRefining,
    statePasting,
    stateDone,
    stateError,
    stateMicDenied,
    stateRecordingStartFailed,
    overlayListening,
    overlayTranscribing,
    overlayOptimizingQuality,
    overlayRefining,
    overlayPasting,
    overlayDone,
    unknownTarget,
};
Q_ENUM_NS(Key)

/// The key's own name, by which views ask for it.
QString rawValue(Key key);

/// The text of `key` in `language`.
QString text(Key key, AppLanguage language);

/// The name of a language of the interface.
QString appLanguageName(AppLanguage named, AppLanguage language);

QString appAppearanceName(AppAppearance appearance, AppLanguage language);
QString performanceModeName(DictationPerformanceMode mode, AppLanguage language);
QString transcriptionEngineName(TranscriptionEngineOption engine, AppLanguage language);
QString transitionSoundName(ProcessingTransitionSound sound, AppLanguage language);

/// The name of a transcription language; an unknown code comes back in upper case. Codes match exactly.
QString transcriptionLanguageName(const QString &code, AppLanguage language);

QString profileAvatarName(ProfileAvatarPreset preset, AppLanguage language);

/// "3 total".
QString historyCount(qint64 count, AppLanguage language);

/// "3 selected".
QString selectedCount(qint64 count, AppLanguage language);

/// "Pinned: 3."
QString pinnedCount(qint64 count, AppLanguage language);

/// "Progress: 2/3".
QString onboardingProgress(qint64 completed, qint64 total, AppLanguage language);

/// "Language: RO".
QString languageLabel(const QString &code, AppLanguage language);

/// "Copy <title>"; the title keeps its case.
QString copyTitle(const QString &title, AppLanguage language);

/// "Pasted to: <app>"; an absent or empty name gives the text for an unknown target.
QString pasteTargetLabel(const std::optional<QString> &app, AppLanguage language);

/// The name of a state; an error shows as such, without its message.
QString dictationStateLabel(const DictationState &state, AppLanguage language);

} // namespace L10n
