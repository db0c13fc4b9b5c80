#include "Platform/Desktop/FileUserDefaults.h"

#include "Foundation/Error.h"
#include "Foundation/Log.h"
#include "Platform/Desktop/DefaultsFormat.h"

#include <QFile>
#include <QFileInfo>

#include <mutex>
#include <utility>

namespace {
/// The name under which an unreadable file is kept.
QString keptPath(const QString &path, int number) {
    return path + QStringLiteral(".unreadable-") + QString::number(number);
}
} // namespace

/// Hands content from the main thread to the background writer.
struct FileUserDefaults::Outbox {
    FileURL fileURL;
    FileManager &fileManager;
    AtomicFileWriter &writer;

    std::mutex mutex;
    /// The latest content; absent once the writer has taken it.
    std::optional<QByteArray> content;
    bool hasFailed = false;

    std::optional<QByteArray> takeContent() {
        const std::lock_guard lock(mutex);
        return std::exchange(content, std::nullopt);
    }

    /// Returns whether a write must be queued.
    bool put(const QByteArray &newContent) {
        const std::lock_guard lock(mutex);
        return !std::exchange(content, newContent).has_value();
    }

    bool lastWriteFailed() {
        const std::lock_guard lock(mutex);
        return hasFailed;
    }

    /// Returns whether the previous outcome was different.
    bool noteOutcome(bool failed) {
        const std::lock_guard lock(mutex);
        return std::exchange(hasFailed, failed) != failed;
    }

    void write() {
        const std::optional<QByteArray> taken = takeContent();
        try {
            fileManager.createDirectory(fileURL.deletingLastPathComponent());
            writer.write(fileURL, *taken, FilePrivacy::Private);
            noteOutcome(false);
        } catch (const SystemError &error) {
            // Logged once, not for every step of a slider that is dragged while the disk is full.
            if (noteOutcome(true))
                logLine(QStringLiteral("Tolmi: the settings were not saved: ") + error.errorDescription());
        }
    }
};

FileUserDefaults::FileUserDefaults(const FileURL &fileURL, FileManager &fileManager, AtomicFileWriter &writer)
    : m_fileURL(fileURL)
    , m_outbox(new Outbox { fileURL, fileManager, writer })
    , m_queue(QStringLiteral("Tolmi.FileUserDefaults")) {
    load(fileManager);
}

FileUserDefaults::~FileUserDefaults() = default;

std::optional<DefaultsValue> FileUserDefaults::object(const QString &key) const {
    const auto found = m_values.find(key);
    return found == m_values.end() ? std::nullopt : std::optional(found->second);
}

void FileUserDefaults::set(const QString &key, const DefaultsValue &value) {
    const auto [entry, isNew] = m_values.try_emplace(key, value);
    const bool differs = isNew || entry->second != value;
    entry->second = value;
    if (differs || m_outbox->lastWriteFailed())
        scheduleWrite();
}

void FileUserDefaults::removeObject(const QString &key) {
    if (m_values.erase(key) > 0 || m_outbox->lastWriteFailed())
        scheduleWrite();
}

void FileUserDefaults::flush() {
    m_queue.sync([] {});
}

void FileUserDefaults::load(const FileManager &fileManager) {
    if (!fileManager.fileExists(m_fileURL.path()))
        return;
    ParsedDefaults parsed;
    try {
        parsed = parsedDefaults(fileManager.contents(m_fileURL));
    } catch (const SystemError &error) {
        logLine(QStringLiteral("Tolmi: the settings cannot be read: ") + error.errorDescription());
    }
    m_values = std::move(parsed.values);
    if (!parsed.isComplete)
        setAside();
}

// Renames an unreadable file, which the next write would otherwise overwrite.
void FileUserDefaults::setAside() {
    const QString path = m_fileURL.path();
    int number = 1;
    while (QFileInfo::exists(keptPath(path, number)))
        ++number;
    m_mayWrite = QFile::rename(path, keptPath(path, number));
    if (m_mayWrite)
        logLine(QStringLiteral("Tolmi: the settings file was not understood; it is kept as ")
            + keptPath(path, number));
    else
        logLine(
            QStringLiteral("Tolmi: the settings file was not understood and stays; settings are not saved"));
    scheduleWrite();
}

void FileUserDefaults::scheduleWrite() {
    if (m_mayWrite && m_outbox->put(jsonOfDefaults(m_values)))
        m_queue.async([outbox = m_outbox.get()] { outbox->write(); });
}
