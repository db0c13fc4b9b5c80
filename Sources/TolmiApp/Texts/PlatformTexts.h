#pragma once

#include "TolmiApp/Texts/L10n.h"

/// The interface's texts as they are shown on one kind of desktop: those of the table, save where one names a
/// key or a place that the desktop calls otherwise. The program's root chooses; views ask this and not the
/// table.
class PlatformTexts {
public:
    /// All texts as the table has them.
    static PlatformTexts forMacOS() { return PlatformTexts(Desktop::MacOS); }
    static PlatformTexts forLinux() { return PlatformTexts(Desktop::Linux); }

    /// The text of `key` in `language`.
    QString text(L10n::Key key, AppLanguage language) const;

    /// The phrase in `language` with the values in its places.
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
