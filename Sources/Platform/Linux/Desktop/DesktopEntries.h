#pragma once

#include <QDateTime>
#include <QStringList>

#include <functional>
#include <optional>
#include <vector>

struct ActiveWindow;

/// The description of an application in its desktop file.
struct DesktopEntry {
    /// Desktop file ID: the file name without ".desktop", prefixed with its subfolders.
    QString id;
    /// In the user's language.
    QString name;
    /// The window class of the application, if given.
    QString windowClass;
    /// File name of the program.
    QString program;
};

/// The installed applications, as described by their desktop files.
class DesktopEntries {
public:
    /// `folders` are the applications folders and `languages` locale names ("ro_RO", "ro"), both in order of
    /// precedence.
    DesktopEntries(QStringList folders, QStringList languages);

    /// The folders and languages of the current desktop.
    static DesktopEntries ofThisDesktop();

    /// The entry of the application that owns a window. `program` is the file name of the window's program,
    /// empty if unknown. Notices desktop files added or removed since the last call.
    std::optional<DesktopEntry> find(const ActiveWindow &window, const QString &program);

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
