#include "Platform/Linux/Desktop/DesktopEntries.h"

#include "Platform/Linux/Desktop/ActiveWindow.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLocale>
#include <QStandardPaths>

#include <algorithm>

namespace {
/// Keys and values of the group [Desktop Entry].
QHash<QString, QString> mainGroup(const QString &path) {
    QFile file(path);
    QHash<QString, QString> values;
    if (!file.open(QIODevice::ReadOnly))
        return values;
    bool isInGroup = false;
    while (!file.atEnd()) {
        const QString line = QString::fromUtf8(file.readLine()).trimmed();
        if (line.startsWith(u'['))
            isInGroup = line == QLatin1String("[Desktop Entry]");
        else if (isInGroup && !line.startsWith(u'#') && line.contains(u'='))
            values.insert(line.section(u'=', 0, 0).trimmed(), line.section(u'=', 1).trimmed());
    }
    return values;
}

QString localizedName(const QHash<QString, QString> &values, const QStringList &languages) {
    for (const QString &language : languages) {
        const QString name = values.value(QStringLiteral("Name[%1]").arg(language));
        if (!name.isEmpty())
            return name;
    }
    return values.value(QStringLiteral("Name"));
}

/// The file name of the program in a command line, which may start with `env VARIABLE=value`.
QString programOf(const QString &commandLine) {
    const QStringList words = commandLine.split(u' ', Qt::SkipEmptyParts);
    const auto program = std::ranges::find_if(
        words, [](const QString &word) { return word != QLatin1String("env") && !word.contains(u'='); });
    return program == words.end() ? QString() : QFileInfo(QString(*program).remove(u'"')).fileName();
}

bool isSame(const QString &one, const QString &other) {
    return !one.isEmpty() && one.compare(other, Qt::CaseInsensitive) == 0;
}
} // namespace

DesktopEntries::DesktopEntries(QStringList folders, QStringList languages)
    : m_folders(std::move(folders))
    , m_languages(std::move(languages)) {
    refresh();
}

DesktopEntries DesktopEntries::ofThisDesktop() {
    const QString locale = QLocale::system().name();
    return { QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation),
        { locale, locale.section(u'_', 0, 0) } };
}

std::optional<DesktopEntry> DesktopEntries::find(const ActiveWindow &window, const QString &program) {
    refresh();
    const auto isOfClass = [&window](const QString &text) {
        return isSame(text, window.className) || isSame(text, window.instance);
    };
    // Most reliable first; the program's file name is last, because many entries may share it.
    const std::function<bool(const DesktopEntry &)> criteria[] = {
        [&](const DesktopEntry &entry) { return isSame(entry.id, window.applicationID); },
        [&](const DesktopEntry &entry) { return isOfClass(entry.windowClass); },
        [&](const DesktopEntry &entry) { return isOfClass(entry.id); },
        [&](const DesktopEntry &entry) { return isOfClass(entry.id.section(u'.', -1)); },
        [&](const DesktopEntry &entry) { return isSame(entry.program, program); },
    };
    for (const auto &criterion : criteria) {
        if (auto entry = first(criterion))
            return entry;
    }
    return {};
}

void DesktopEntries::refresh() {
    std::vector<QDateTime> times = folderTimes();
    if (times == m_times)
        return;
    m_times = std::move(times);
    m_entries.clear();
    for (const QString &folder : m_folders)
        readFolder(folder);
}

std::vector<QDateTime> DesktopEntries::folderTimes() const {
    std::vector<QDateTime> times;
    for (const QString &folder : m_folders)
        times.push_back(QFileInfo(folder).lastModified());
    return times;
}

void DesktopEntries::readFolder(const QString &folder) {
    QDirIterator files(folder, { QStringLiteral("*.desktop") }, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString id = QDir(folder).relativeFilePath(path).chopped(8).replace(u'/', u'-');
        const auto isKnown = [&id](const DesktopEntry &entry) { return entry.id == id; };
        const QHash<QString, QString> values = mainGroup(path);
        if (values.value(QStringLiteral("Type")) != QLatin1String("Application") || first(isKnown))
            continue;
        m_entries.push_back(
            { id, localizedName(values, m_languages), values.value(QStringLiteral("StartupWMClass")),
                programOf(values.value(QStringLiteral("Exec"))) });
    }
}

std::optional<DesktopEntry> DesktopEntries::first(
    const std::function<bool(const DesktopEntry &)> &matches) const {
    const auto entry = std::ranges::find_if(m_entries, matches);
    return entry == m_entries.end() ? std::nullopt : std::optional(*entry);
}
