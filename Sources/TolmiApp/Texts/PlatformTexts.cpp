#include "TolmiApp/Texts/PlatformTexts.h"

#include "TolmiApp/Texts/L10nTable.h"

#include <algorithm>

namespace {
using L10n::Key;

// clang-format off
constexpr std::array linuxOverrides {
    L10n::Row { Key::commandCenterDictationHint, u"Use Right Alt (AltGr) or the button below to control recording.", u"Foloseste Alt dreapta (AltGr) sau butonul de mai jos pentru a controla inregistrarea." },
    L10n::Row { Key::dictationLiveHotkey, u"Hotkey: Right Alt (AltGr)", u"Hotkey: Alt dreapta (AltGr)" },
    L10n::Row { Key::historyNoTranscriptionsHint, u"Use Right Alt (AltGr) to dictate.", u"Foloseste Alt dreapta (AltGr) pentru dictare." },
    L10n::Row { Key::settingsRightOption, u"Right Alt (AltGr)", u"Alt dreapta (AltGr)" },
    L10n::Row { Key::historyAudioRevealInFinder, u"Show in Folder", u"Arata in dosar" },
    L10n::Row { Key::historyAudioPlayFailedMessage, u"Please try again or show the file in its folder.", u"Incearca din nou sau arata fisierul in dosarul lui." },
    L10n::Row { Key::healthEnableMicHint, u"Allow Tolmi to use the microphone in your desktop's privacy settings.", u"Permite lui Tolmi accesul la microfon in setarile de confidentialitate ale desktopului." },
    L10n::Row { Key::healthRecheckPermissions, u"Check the permissions again in your desktop's settings.", u"Verifica din nou permisiunile in setarile desktopului." },
    L10n::Row { Key::healthGrantAccessibilityHint, u"Allow Tolmi to watch and press keys when your desktop asks, or in its settings.", u"Permite lui Tolmi sa urmareasca si sa apese taste cand desktopul intreaba sau in setarile lui." },
    L10n::Row { Key::settingsUpdatesNotConfiguredHint, u"This build of Tolmi does not look for updates. They are turned on when it is built, by TOLMI_UPDATE_FEED_URL and TOLMI_UPDATE_PUBLIC_KEY.", u"Acest build Tolmi nu cauta actualizari. Ele se activeaza la compilare, prin TOLMI_UPDATE_FEED_URL si TOLMI_UPDATE_PUBLIC_KEY." },
};
// clang-format on
} // namespace

PlatformTexts::PlatformTexts(
    std::span<const L10n::Row> overrides, QString settingsShortcut, QString quitShortcut)
    : m_overrides(overrides)
    , m_settingsShortcut(std::move(settingsShortcut))
    , m_quitShortcut(std::move(quitShortcut)) { }

PlatformTexts PlatformTexts::forMacOS() {
    return { {}, QStringLiteral("⌘,"), QStringLiteral("⌘Q") };
}

PlatformTexts PlatformTexts::forLinux() {
    return { linuxOverrides, QStringLiteral("Ctrl+,"), QStringLiteral("Ctrl+Q") };
}

QString PlatformTexts::text(L10n::Key key, AppLanguage language) const {
    const auto found = std::find_if(
        m_overrides.begin(), m_overrides.end(), [key](const L10n::Row &row) { return row.key == key; });
    return found == m_overrides.end() ? L10n::text(key, language) : L10n::text(*found, language);
}
