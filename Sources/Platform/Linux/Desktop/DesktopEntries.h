#pragma once

#include <QDateTime>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

struct X11ActiveWindow;

/// What a desktop file says of an application.
struct DesktopEntry {
    /// Name of the file without ".desktop", with its folders below the applications folder before it.
    QString id;
    /// In the user's language.
    QString name;
    /// The class that the application's windows have, where it is told.
    QString windowClass;
    /// File name of the program.
    QString program;
};

/// The applications that are installed on this desktop, as their desktop files describe them.
class DesktopEntries {
public:
    /// `folders` are the applications folders, the first going before the others; `languages` are locale
    /// names
    /// ("ro_RO", "ro") in the order of preference.
    DesktopEntries(QStringList folders, QStringList languages);

    /// The folders and the language of the desktop that this program runs on.
    static DesktopEntries ofThisDesktop();

    /// The entry of the application that a window belongs to. `program` is the file name of the window's
    /// program, empty when not known. Files that came or went since the last call are noticed.
    std::optional<DesktopEntry> find(const X11ActiveWindow &window, const QString &program);

private:
    void refresh();
    std::vector<QDateTime> folderTimes() const;
    void readFolder(const QString &folder);
    std::optional<DesktopEntry> first(const std::function<bool(const DesktopEntry &)> &matches) const;

    QStringList m_folders;
    QStringList m_languages;
    std::vector<QDateTime> m_times;
    std::vector<DesktopEntry> m_entries;
};
