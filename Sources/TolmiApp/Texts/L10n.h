#pragma once

#include "TolmiApp/Contracts/DictationState.h"
#include "TolmiApp/Settings/AppAppearance.h"
#include "TolmiApp/Settings/AppLanguage.h"
#include "TolmiApp/Settings/DictationPerformanceMode.h"
#include "TolmiApp/Settings/ProcessingTransitionSound.h"
#include "TolmiApp/Settings/ProfileAvatarPreset.h"
#include "TolmiApp/Settings/TranscriptionEngineOption.h"
#include "TolmiApp/Texts/L10nKeys.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

/// Every text of the interface in every language. The texts stand in the folder Languages and are compiled
/// in: nothing is read from disk, and any thread may ask. What a language lacks is given in English.
namespace L10n {

/// Every key, in the order of the table.
constexpr std::array<Key, keyCount> allKeys() {
    std::array<Key, keyCount> keys {};
    for (std::size_t index = 0; index < keyCount; ++index)
        keys[index] = Key(index);
    return keys;
}

/// The key's own name, by which views ask for it.
QString rawValue(Key key);

/// The text of `key` in `language`.
QString text(Key key, AppLanguage language);

/// The phrase in `language` with the values in the places of its `%1` to `%9`. A value that it has no place
/// for is left out, a place without a value stays as it is.
QString text(Phrase phrase, AppLanguage language, const QStringList &values = {});

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

/// "<Name>: <value>".
QString labelled(Key name, const QString &value, AppLanguage language);

/// The name of a state; an error shows as such, without its message.
QString dictationStateLabel(const DictationState &state, AppLanguage language);

} // namespace L10n
