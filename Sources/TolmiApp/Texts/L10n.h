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

/// All texts of the interface in every language. They are compiled in from the folder Languages; any thread
/// may read them. English is the fallback for missing texts.
namespace L10n {

/// All keys in table order.
constexpr std::array<Key, keyCount> allKeys() {
    std::array<Key, keyCount> keys {};
    for (std::size_t index = 0; index < keyCount; ++index)
        keys[index] = Key(index);
    return keys;
}

/// The key's name, which views use.
QString rawValue(Key key);

/// The text of `key` in `language`.
QString text(Key key, AppLanguage language);

/// The phrase in `language` with its placeholders `%1` to `%9` replaced. Surplus values are ignored; a
/// placeholder without a value remains.
QString text(Phrase phrase, AppLanguage language, const QStringList &values = {});

/// The name of an interface language.
QString appLanguageName(AppLanguage named, AppLanguage language);

QString appAppearanceName(AppAppearance appearance, AppLanguage language);
QString performanceModeName(DictationPerformanceMode mode, AppLanguage language);
QString transcriptionEngineName(TranscriptionEngineOption engine, AppLanguage language);
QString transitionSoundName(ProcessingTransitionSound sound, AppLanguage language);

/// The name of a transcription language; for an unknown code, the code in upper case. Codes match exactly.
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

/// "Copy <title>"; the title's case is kept.
QString copyTitle(const QString &title, AppLanguage language);

/// "Pasted to: <app>"; the text for an unknown target if the name is absent or empty.
QString pasteTargetLabel(const std::optional<QString> &app, AppLanguage language);

/// "<Name>: <value>".
QString labelled(Key name, const QString &value, AppLanguage language);

/// The name of a state; for an error, without its message.
QString dictationStateLabel(const DictationState &state, AppLanguage language);

} // namespace L10n
