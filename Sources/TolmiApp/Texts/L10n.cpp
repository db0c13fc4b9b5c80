#include "TolmiApp/Texts/L10n.h"

#include "Text/Text.h"
#include "TolmiApp/Texts/L10nTable.h"

#include <QMetaEnum>

#include <algorithm>

namespace L10n {

namespace {
/// A text that is no part of the table.
QString chosen(AppLanguage language, QStringView english, QStringView romanian) {
    return (language == AppLanguage::Romanian ? romanian : english).toString();
}

struct LanguageName {
    QStringView code;
    QStringView english;
    QStringView romanian;
};

constexpr std::array languageNames {
    LanguageName { u"ro", u"Romanian", u"Romana" },
    LanguageName { u"en", u"English", u"Engleza" },
    LanguageName { u"auto", u"Auto-detect", u"Auto-detect" },
    LanguageName { u"es", u"Spanish", u"Spaniola" },
    LanguageName { u"fr", u"French", u"Franceza" },
    LanguageName { u"de", u"German", u"Germana" },
    LanguageName { u"it", u"Italian", u"Italiana" },
    LanguageName { u"pt", u"Portuguese", u"Portugheza" },
};

Key transitionSoundKey(ProcessingTransitionSound sound) {
    switch (sound) {
    case ProcessingTransitionSound::None:
        return Key::settingsTransitionSoundNone;
    case ProcessingTransitionSound::Funk:
        return Key::settingsTransitionSoundFunk;
    case ProcessingTransitionSound::Submarine:
        return Key::settingsTransitionSoundSubmarine;
    case ProcessingTransitionSound::Blow:
        return Key::settingsTransitionSoundBlow;
    case ProcessingTransitionSound::Morse:
        return Key::settingsTransitionSoundMorse;
    case ProcessingTransitionSound::Pop:
        return Key::settingsTransitionSoundPop;
    case ProcessingTransitionSound::Bottle:
        return Key::settingsTransitionSoundBottle;
    case ProcessingTransitionSound::Frog:
        return Key::settingsTransitionSoundFrog;
    case ProcessingTransitionSound::Purr:
        return Key::settingsTransitionSoundPurr;
    case ProcessingTransitionSound::Sosumi:
        return Key::settingsTransitionSoundSosumi;
    case ProcessingTransitionSound::Tink:
        return Key::settingsTransitionSoundTink;
    case ProcessingTransitionSound::Hero:
        return Key::settingsTransitionSoundHero;
    case ProcessingTransitionSound::Glass:
        return Key::settingsTransitionSoundGlass;
    case ProcessingTransitionSound::Basso:
        return Key::settingsTransitionSoundBasso;
    case ProcessingTransitionSound::Ping:
        return Key::settingsTransitionSoundPing;
    }
    Q_UNREACHABLE();
}

Key dictationStateKey(DictationState::Kind kind) {
    switch (kind) {
    case DictationState::Kind::Idle:
        return Key::stateReady;
    case DictationState::Kind::Recording:
        return Key::stateRecording;
    case DictationState::Kind::Transcribing:
        return Key::stateTranscribing;
    case DictationState::Kind::OptimizingQuality:
        return Key::stateOptimizingQuality;
    case DictationState::Kind::Refining:
        return Key::stateRefining;
    case DictationState::Kind::Pasting:
        return Key::statePasting;
    case DictationState::Kind::Done:
        return Key::stateDone;
    case DictationState::Kind::Error:
        return Key::stateError;
    }
    Q_UNREACHABLE();
}
} // namespace

QString rawValue(Key key) {
    return QString::fromLatin1(QMetaEnum::fromType<Key>().valueToKey(int(key)));
}

QString text(Key key, AppLanguage language) {
    return text(table[size_t(key)], language);
}

QString text(const Row &row, AppLanguage language) {
    return chosen(language, row.english, row.romanian);
}

QString appLanguageName(AppLanguage named, AppLanguage language) {
    return named == AppLanguage::Romanian ? chosen(language, u"Romanian", u"Romana")
                                          : chosen(language, u"English", u"Engleza");
}

QString appAppearanceName(AppAppearance appearance, AppLanguage language) {
    switch (appearance) {
    case AppAppearance::System:
        return text(Key::settingsAppearanceSystem, language);
    case AppAppearance::Light:
        return text(Key::settingsAppearanceLight, language);
    case AppAppearance::Dark:
        return text(Key::settingsAppearanceDark, language);
    }
    Q_UNREACHABLE();
}

QString performanceModeName(DictationPerformanceMode mode, AppLanguage language) {
    switch (mode) {
    case DictationPerformanceMode::Faster:
        return text(Key::settingsPerformanceFaster, language);
    case DictationPerformanceMode::MaxQuality:
        return text(Key::settingsPerformanceMaxQuality, language);
    }
    Q_UNREACHABLE();
}

QString transcriptionEngineName(TranscriptionEngineOption engine, AppLanguage language) {
    switch (engine) {
    case TranscriptionEngineOption::WhisperCLI:
        return text(Key::settingsEngineWhisperCLI, language);
    }
    Q_UNREACHABLE();
}

QString transitionSoundName(ProcessingTransitionSound sound, AppLanguage language) {
    return text(transitionSoundKey(sound), language);
}

QString transcriptionLanguageName(const QString &code, AppLanguage language) {
    const auto known = std::find_if(languageNames.begin(), languageNames.end(),
        [&](const LanguageName &name) { return name.code == code; });
    return known == languageNames.end() ? Text::upperCased(code)
                                        : chosen(language, known->english, known->romanian);
}

QString profileAvatarName(ProfileAvatarPreset preset, AppLanguage language) {
    switch (preset) {
    case ProfileAvatarPreset::Person:
        return chosen(language, u"Default", u"Standard");
    case ProfileAvatarPreset::Work:
        return chosen(language, u"Work", u"Office");
    case ProfileAvatarPreset::Spark:
        return chosen(language, u"Creative", u"Creativ");
    case ProfileAvatarPreset::Voice:
        return chosen(language, u"Voice", u"Dictare");
    }
    Q_UNREACHABLE();
}

QString historyCount(qint64 count, AppLanguage language) {
    return QString::number(count) + chosen(language, u" total", u" total");
}

QString selectedCount(qint64 count, AppLanguage language) {
    return QString::number(count) + chosen(language, u" selected", u" selectate");
}

QString pinnedCount(qint64 count, AppLanguage language) {
    return chosen(language, u"Pinned: ", u"Fixate: ") + QString::number(count) + u'.';
}

QString onboardingProgress(qint64 completed, qint64 total, AppLanguage language) {
    return chosen(language, u"Progress: ", u"Progres: ") + QString::number(completed) + u'/'
        + QString::number(total);
}

QString languageLabel(const QString &code, AppLanguage language) {
    return text(Key::historyLanguagePrefix, language) + u' ' + Text::upperCased(code);
}

QString copyTitle(const QString &title, AppLanguage language) {
    return chosen(language, u"Copy ", u"Copiaza ") + title;
}

QString pasteTargetLabel(const std::optional<QString> &app, AppLanguage language) {
    if (!app || app->isEmpty())
        return text(Key::unknownTarget, language);
    return text(Key::historyPastedTo, language) + QStringLiteral(": ") + *app;
}

QString dictationStateLabel(const DictationState &state, AppLanguage language) {
    return text(dictationStateKey(state.kind()), language);
}

} // namespace L10n
