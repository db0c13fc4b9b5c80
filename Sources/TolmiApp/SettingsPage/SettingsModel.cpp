#include "TolmiApp/SettingsPage/SettingsModel.h"

#include "TolmiApp/Texts/L10n.h"
#include "TolmiApp/Texts/PickerOptions.h"
#include "TolmiCore/OllamaConfiguration.h"

#include <cmath>

namespace {

using Sound = ProcessingTransitionSound;

// Differs from the order of the enumeration: silence is last.
constexpr std::array transitionSounds {
    Sound::Funk,
    Sound::Blow,
    Sound::Tink,
    Sound::Pop,
    Sound::Purr,
    Sound::Morse,
    Sound::Hero,
    Sound::Submarine,
    Sound::Glass,
    Sound::Bottle,
    Sound::Frog,
    Sound::Basso,
    Sound::Ping,
    Sound::Sosumi,
    Sound::None,
};

/// `value` rounded to six decimals, which hides representation errors.
double roundedForDisplay(double value) {
    constexpr double millionths = 1e6;
    return std::nearbyint(value * millionths) / millionths;
}

} // namespace

SettingsModel::SettingsModel(Dependencies dependencies, QObject *parent)
    : QObject(parent)
    , m_dependencies(std::move(dependencies)) {
    const SettingsStore *const store = settings();
    connect(store, &SettingsStore::uiLanguageChanged, this, &SettingsModel::optionsChanged);
    connect(store, &SettingsStore::appearanceChanged, this, &SettingsModel::appearanceChanged);
    connect(
        store, &SettingsStore::transcriptionEngineChanged, this, &SettingsModel::transcriptionEngineChanged);
    connect(store, &SettingsStore::performanceModeChanged, this, &SettingsModel::performanceModeChanged);
    connect(store, &SettingsStore::processingTransitionSoundChanged, this,
        &SettingsModel::transitionSoundChanged);
    connect(store, &SettingsStore::ollamaTimeoutChanged, this, &SettingsModel::ollamaTimeoutTextChanged);
}

QVariantList SettingsModel::appearanceOptions() const {
    return PickerOptions::of(allCases<AppAppearance>(), L10n::appAppearanceName, language());
}

QVariantList SettingsModel::uiLanguageOptions() const {
    return PickerOptions::of(allCases<AppLanguage>(), L10n::appLanguageName, language());
}

QVariantList SettingsModel::transcriptionLanguageOptions() const {
    return PickerOptions::transcriptionLanguages(language());
}

QVariantList SettingsModel::transcriptionEngineOptions() const {
    return PickerOptions::of(
        allCases<TranscriptionEngineOption>(), L10n::transcriptionEngineName, language());
}

QVariantList SettingsModel::performanceModeOptions() const {
    return PickerOptions::of(allCases<DictationPerformanceMode>(), L10n::performanceModeName, language());
}

QVariantList SettingsModel::transitionSoundOptions() const {
    return PickerOptions::of(transitionSounds, L10n::transitionSoundName, language());
}

QString SettingsModel::appearance() const {
    return rawValue(settings()->appearance());
}

void SettingsModel::setAppearance(const QString &stored) {
    settings()->setAppearance(rawValueOrDefault<AppAppearance>(stored));
}

QString SettingsModel::uiLanguage() const {
    return rawValue(language());
}

void SettingsModel::setUiLanguage(const QString &stored) {
    settings()->setUiLanguage(rawValueOrDefault<AppLanguage>(stored));
}

QString SettingsModel::transcriptionEngine() const {
    return rawValue(settings()->transcriptionEngine());
}

void SettingsModel::setTranscriptionEngine(const QString &stored) {
    settings()->setTranscriptionEngine(rawValueOrDefault<TranscriptionEngineOption>(stored));
}

QString SettingsModel::performanceMode() const {
    return rawValue(settings()->performanceMode());
}

void SettingsModel::setPerformanceMode(const QString &stored) {
    settings()->setPerformanceMode(rawValueOrDefault<DictationPerformanceMode>(stored));
}

QString SettingsModel::transitionSound() const {
    return rawValue(settings()->processingTransitionSound());
}

void SettingsModel::setTransitionSound(const QString &stored) {
    settings()->setProcessingTransitionSound(rawValueOrDefault<ProcessingTransitionSound>(stored));
}

bool SettingsModel::canPreviewTransitionSound() const {
    return settings()->processingTransitionSound() != ProcessingTransitionSound::None;
}

QString SettingsModel::ollamaTimeoutText() const {
    const double seconds = roundedForDisplay(settings()->ollamaTimeout());
    return m_dependencies.locale.toString(seconds, 'f', QLocale::FloatingPointShortest);
}

void SettingsModel::setOllamaTimeoutText(const QString &text) {
    bool isNumber = false;
    const double seconds = m_dependencies.locale.toDouble(text.trimmed(), &isNumber);
    if (isNumber && std::isfinite(seconds))
        settings()->setOllamaTimeout(seconds);
}

QString SettingsModel::volumeText(double value) {
    return QString::number(std::llround(value * 100)) + u'%';
}

void SettingsModel::previewTransitionSound() {
    if (m_previewSound)
        m_previewSound->stop();
    const std::optional<QString> name = systemSoundName(settings()->processingTransitionSound());
    if (!name)
        return;
    std::unique_ptr<SystemSound> sound = m_dependencies.sounds.named(*name);
    if (!sound)
        return;
    sound->setLoops(false);
    sound->setVolume(float(settings()->processingTransitionPreviewVolume()));
    m_previewSound = std::move(sound);
    m_previewSound->play();
}

void SettingsModel::resetSystemPrompt() {
    settings()->setOllamaSystemPrompt(OllamaConfiguration::defaultSystemPrompt);
}

void SettingsModel::openProfile() {
    m_dependencies.onNavigate(StudioDestination::Profile);
}
