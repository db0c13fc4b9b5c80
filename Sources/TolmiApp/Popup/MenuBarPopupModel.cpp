#include "TolmiApp/Popup/MenuBarPopupModel.h"

#include "Platform/Pasteboard.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/Settings/SettingsStore.h"
#include "TolmiApp/Texts/L10n.h"
#include "TolmiApp/Texts/PickerOptions.h"

MenuBarPopupModel::MenuBarPopupModel(
    std::shared_ptr<DictationFlowManager> flow, Pasteboard &pasteboard, Actions actions, QObject *parent)
    : ObservableObject(parent)
    , m_flow(std::move(flow))
    , m_pasteboard(pasteboard)
    , m_actions(std::move(actions))
    , m_profile(settings()) {
    observeFlow();
    observeSettings();
}

void MenuBarPopupModel::observeFlow() {
    const DictationFlowManager *const flow = m_flow.get();
    connect(flow, &DictationFlowManager::stateChanged, this, &MenuBarPopupModel::stateChanged);
    connect(flow, &DictationFlowManager::stateChanged, this, &MenuBarPopupModel::stateLabelChanged);
    connect(flow, &DictationFlowManager::stateChanged, this, [this] { freeKeyboard(); });
    connect(flow, &DictationFlowManager::accessibilityGrantedChanged, this,
        &MenuBarPopupModel::accessibilityGrantedChanged);
    connect(
        flow, &DictationFlowManager::lastTranscriptChanged, this, &MenuBarPopupModel::lastTranscriptChanged);
}

void MenuBarPopupModel::freeKeyboard() {
    const DictationState::Kind kind = m_flow->state().kind();
    // The second for a popup that was opened in between.
    if (kind == DictationState::Kind::Transcribing || kind == DictationState::Kind::Pasting)
        Q_EMIT targetNeedsKeyboard();
}

void MenuBarPopupModel::observeSettings() {
    const SettingsStore *const store = &settings();
    connect(store, &SettingsStore::uiLanguageChanged, this, &MenuBarPopupModel::uiLanguageChanged);
    connect(store, &SettingsStore::uiLanguageChanged, this, &MenuBarPopupModel::stateLabelChanged);
    connect(store, &SettingsStore::languageChanged, this, &MenuBarPopupModel::transcriptionLanguageChanged);
    connect(
        store, &SettingsStore::refinementEnabledChanged, this, &MenuBarPopupModel::refinementEnabledChanged);
}

SettingsStore &MenuBarPopupModel::settings() const {
    return m_flow->settings();
}

MenuBarPopupModel::Indicator MenuBarPopupModel::indicatorOf(DictationState::Kind kind) {
    switch (kind) {
    case DictationState::Kind::Transcribing:
    case DictationState::Kind::OptimizingQuality:
    case DictationState::Kind::Refining:
        return Indicator::Spinner;
    default:
        return Indicator::Circle;
    }
}

MenuBarPopupModel::Shade MenuBarPopupModel::shadeOf(DictationState::Kind kind) {
    switch (kind) {
    case DictationState::Kind::Idle:
    case DictationState::Kind::Done:
        return Shade::Frost;
    case DictationState::Kind::Recording:
        return Shade::White;
    case DictationState::Kind::Transcribing:
    case DictationState::Kind::OptimizingQuality:
    case DictationState::Kind::Refining:
    case DictationState::Kind::Pasting:
        return Shade::Cloud;
    case DictationState::Kind::Error:
        return Shade::Smoke;
    }
    Q_UNREACHABLE();
}

MenuBarPopupModel::Indicator MenuBarPopupModel::badgeIndicator() const {
    return indicatorOf(m_flow->state().kind());
}

MenuBarPopupModel::Shade MenuBarPopupModel::badgeShade() const {
    return shadeOf(m_flow->state().kind());
}

QString MenuBarPopupModel::stateLabel() const {
    return L10n::dictationStateLabel(m_flow->state(), settings().uiLanguage());
}

bool MenuBarPopupModel::accessibilityGranted() const {
    return m_flow->accessibilityGranted();
}

const QString &MenuBarPopupModel::lastTranscript() const {
    return m_flow->lastTranscript();
}

QVariantList MenuBarPopupModel::uiLanguageOptions() const {
    return PickerOptions::of(allCases<AppLanguage>(), L10n::appLanguageName, settings().uiLanguage());
}

QVariantList MenuBarPopupModel::transcriptionLanguageOptions() const {
    return PickerOptions::transcriptionLanguages(settings().uiLanguage());
}

QString MenuBarPopupModel::uiLanguage() const {
    return rawValue(settings().uiLanguage());
}

void MenuBarPopupModel::setUiLanguage(const QString &stored) {
    settings().setUiLanguage(rawValueOrDefault<AppLanguage>(stored));
}

const QString &MenuBarPopupModel::transcriptionLanguage() const {
    return settings().language();
}

void MenuBarPopupModel::setTranscriptionLanguage(const QString &code) {
    settings().setLanguage(code);
}

bool MenuBarPopupModel::refinementEnabled() const {
    return settings().refinementEnabled();
}

void MenuBarPopupModel::setRefinementEnabled(bool isEnabled) {
    if (isEnabled == refinementEnabled())
        return;
    settings().setRefinementEnabled(isEnabled);
    m_flow->configureRefiner();
}

void MenuBarPopupModel::copyLastTranscript() {
    m_pasteboard.setItems({ PasteboardItem { { { pasteboardTextType, lastTranscript().toUtf8() } } } });
}

void MenuBarPopupModel::requestAccessibility() {
    m_flow->requestAccessibility();
}
