#pragma once

#include "TolmiApp/Texts/L10n.h"

#include <span>

namespace L10n {
struct Row;
}

/// The interface's texts as they are shown on one kind of desktop: those of the table, save where one names a
/// key or a place that the desktop calls otherwise. The program's root chooses; views ask this and not the
/// table.
class PlatformTexts {
public:
    /// All texts as the table has them.
    static PlatformTexts forMacOS();
    static PlatformTexts forLinux();

    /// The text of `key` in `language`.
    QString text(L10n::Key key, AppLanguage language) const;

    /// The captions beside the two entries of the popup that have a shortcut.
    const QString &settingsShortcut() const { return m_settingsShortcut; }
    const QString &quitShortcut() const { return m_quitShortcut; }

private:
    PlatformTexts(std::span<const L10n::Row> overrides, QString settingsShortcut, QString quitShortcut);

    std::span<const L10n::Row> m_overrides;
    QString m_settingsShortcut;
    QString m_quitShortcut;
};
