#pragma once

#include "Foundation/SerialQueue.h"
#include "Platform/AtomicFileWriter.h"
#include "Platform/FileManager.h"
#include "Platform/UserDefaults.h"

#include <map>
#include <memory>

/// The user's settings in one JSON file that only the user can read.
///
/// The file is read at construction. A file that cannot be parsed completely, or that contains anything but
/// scalar values, is renamed and kept, and the values that could be read are used. Writes are coalesced and
/// done in the background; the destructor waits for the last one.
class FileUserDefaults final : public UserDefaults {
public:
    /// The references must outlive this. The folder of `fileURL` is created with the first write.
    FileUserDefaults(const FileURL &fileURL, FileManager &fileManager, AtomicFileWriter &writer);
    ~FileUserDefaults() override;

    std::optional<DefaultsValue> object(const QString &key) const override;
    void set(const QString &key, const DefaultsValue &value) override;
    void removeObject(const QString &key) override;
    void flush() override;

private:
    struct Outbox;

    void load(const FileManager &fileManager);
    void setAside();
    void scheduleWrite();

    const FileURL m_fileURL;
    std::map<QString, DefaultsValue> m_values;
    bool m_mayWrite = true;
    std::unique_ptr<Outbox> m_outbox;
    // The last member, so that it is destroyed first: queued work uses the others.
    SerialQueue m_queue;
};
