#include "TolmiApp/Texts/L10n.h"

#include "Text/Text.h"
#include "TolmiApp/Texts/L10nTable.h"

#include <algorithm>

namespace L10n {

namespace {
struct LanguageName {
    QStringView code;
    Phrase name;
};

constexpr std::array transcriptionLanguageNames {
    LanguageName { u"ro", Phrase::languageRomanian },
    LanguageName { u"en", Phrase::languageEnglish },
    LanguageName { u"auto", Phrase::languageAuto },
    LanguageName { u"es", Phrase::languageSpanish },
    LanguageName { u"fr", Phrase::languageFrench },
    LanguageName { u"de", Phrase::languageGerman },
    LanguageName { u"it", Phrase::languageItalian },
    LanguageName { u"pt", Phrase::languagePortuguese },
};

/// The name of the language with this code, if known.
std::optional<Phrase> languageName(const QString &code) {
    const auto known = std::find_if(transcriptionLanguageNames.begin(), transcriptionLanguageNames.end(),
        [&](const LanguageName &name) { return name.code == code; });
    return known == transcriptionLanguageNames.end() ? std::nullopt : std::optional(known->name);
}

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

QStringView find(const Table &table, std::size_t place, AppLanguage language) {
    const QStringView own = table[std::size_t(language)][place];
    return own.isNull() ? table[std::size_t(AppLanguage::English)][place] : own;
}

QString filled(QStringView pattern, const QStringList &values) {
    QString text;
    for (qsizetype index = 0; index < pattern.size(); ++index) {
        const bool isMark = pattern[index] == u'%' && index + 1 < pattern.size();
        const int number = isMark ? pattern[index + 1].digitValue() : 0;
        if (number < 1 || number > values.size()) {
            text += pattern[index];
        } else {
            text += values[number - 1];
            ++index;
        }
    }
    return text;
}

QString rawValue(Key key) {
    return names[std::size_t(key)];
}

// Tools/compile-texts guarantees that English has every text.
QString text(Key key, AppLanguage language) {
    return find(table, std::size_t(key), language).toString();
}

QString text(Phrase phrase, AppLanguage language, const QStringList &values) {
    return filled(find(table, std::size_t(phrase), language), values);
}

QString appLanguageName(AppLanguage named, AppLanguage language) {
    const std::optional<Phrase> name = languageName(::rawValue(named));
    return name ? text(*name, language) : languageNames[std::size_t(named)].toString();
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
    const std::optional<Phrase> name = languageName(code);
    return name ? text(*name, language) : Text::upperCased(code);
}

QString profileAvatarName(ProfileAvatarPreset preset, AppLanguage language) {
    switch (preset) {
    case ProfileAvatarPreset::Person:
        return text(Phrase::avatarPerson, language);
    case ProfileAvatarPreset::Work:
        return text(Phrase::avatarWork, language);
    case ProfileAvatarPreset::Spark:
        return text(Phrase::avatarSpark, language);
    case ProfileAvatarPreset::Voice:
        return text(Phrase::avatarVoice, language);
    }
    Q_UNREACHABLE();
}

QString historyCount(qint64 count, AppLanguage language) {
    return text(Phrase::historyCount, language, { QString::number(count) });
}

QString selectedCount(qint64 count, AppLanguage language) {
    return text(Phrase::selectedCount, language, { QString::number(count) });
}

QString pinnedCount(qint64 count, AppLanguage language) {
    return text(Phrase::pinnedCount, language, { QString::number(count) });
}

QString onboardingProgress(qint64 completed, qint64 total, AppLanguage language) {
    return text(Phrase::onboardingProgress, language, { QString::number(completed), QString::number(total) });
}

QString languageLabel(const QString &code, AppLanguage language) {
    return text(
        Phrase::joined, language, { text(Key::historyLanguagePrefix, language), Text::upperCased(code) });
}

QString copyTitle(const QString &title, AppLanguage language) {
    return text(Phrase::copyTitle, language, { title });
}

QString pasteTargetLabel(const std::optional<QString> &app, AppLanguage language) {
    if (!app || app->isEmpty())
        return text(Key::unknownTarget, language);
    return labelled(Key::historyPastedTo, *app, language);
}

QString labelled(Key name, const QString &value, AppLanguage language) {
    return text(Phrase::labelled, language, { text(name, language), value });
}

QString dictationStateLabel(const DictationState &state, AppLanguage language) {
    return text(dictationStateKey(state.kind()), language);
}

} // namespace L10n
