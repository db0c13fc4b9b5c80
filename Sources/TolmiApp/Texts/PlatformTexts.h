#pragma once

#include "TolmiApp/Texts/L10n.h"

/// The interface texts for one kind of desktop: those of the table, with overrides for keys and locations
/// that have another name there. Main chooses the desktop; views use this instead of the table.
class PlatformTexts {
public:
    /// The texts of the table without overrides.
    static PlatformTexts forMacOS() { return PlatformTexts(Desktop::MacOS); }
    static PlatformTexts forLinux() { return PlatformTexts(Desktop::Linux); }

    /// The text of `key` in `language`.
    QString text(L10n::Key key, AppLanguage language) const;

    /// The phrase in `language` with its placeholders replaced.
    QString text(L10n::Phrase phrase, AppLanguage language, const QStringList &values = {}) const;

private:
    enum class Desktop {
        MacOS,
        Linux,
    };

    explicit PlatformTexts(Desktop desktop)
        : m_desktop(desktop) { }

    QStringView find(std::size_t place, AppLanguage language) const;

    Desktop m_desktop;
};
