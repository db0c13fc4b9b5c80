#pragma once

#include "Platform/Desktop/MainLoopClock.h"
#include "Platform/Linux/Files/LinuxAtomicFileWriter.h"
#include "Platform/Linux/Files/LinuxFileManager.h"
#include "TolmiApp/History/TranscriptionHistory.h"

/// A history like the program's, but in a separate private folder.
class ScratchHistory {
public:
    using TemporaryFiles = LinuxAtomicFileWriter::TemporaryFiles;

    explicit ScratchHistory(
        const QString &folder, TemporaryFiles temporaryFiles = TemporaryFiles::UnnamedWherePossible)
        : m_fileManager({ {}, folder, folder, folder })
        , m_fileWriter(temporaryFiles)
        , m_history(m_clock, m_fileManager, m_fileWriter) { }

    TranscriptionHistory *operator->() { return &m_history; }

    /// The history file in `folder`.
    static QString filePath(const QString &folder) { return folder + QStringLiteral("/Tolmi/history.json"); }

private:
    MainLoopClock m_clock;
    LinuxFileManager m_fileManager;
    LinuxAtomicFileWriter m_fileWriter;
    TranscriptionHistory m_history;
};
