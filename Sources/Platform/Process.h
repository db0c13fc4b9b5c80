#pragma once

#include "Foundation/FileURL.h"

#include <QByteArray>
#include <QStringList>

#include <memory>

/// A child process that was started. Its standard output and standard error go into pipes that nobody reads
/// until asked. One thread at a time.
class Process {
public:
    /// Does not end the process; a process that still runs goes on unattended.
    virtual ~Process() = default;

    /// Whether the process has not ended yet.
    virtual bool isRunning() = 0;

    /// Asks the process to end (the termination signal). It may take its time or refuse.
    virtual void terminate() = 0;

    /// Waits until the process has ended; at most `seconds` when they are not negative. Tells whether it has
    /// ended.
    virtual bool waitUntilExit(double seconds = -1) = 0;

    /// The exit code, or the number of the signal that ended the process. Only after it has ended.
    virtual int terminationStatus() const = 0;

    /// What is left in the standard error pipe, to its end. Only after the process has ended.
    virtual QByteArray readStandardError() = 0;

    /// What is left in the standard output pipe, to its end. Only after the process has ended.
    virtual QByteArray readStandardOutput() = 0;
};

/// Starts processes. Any thread may call it.
class ProcessLauncher {
public:
    virtual ~ProcessLauncher() = default;

    /// Starts `executable` with `arguments`, inheriting working directory, environment and standard input and
    /// nothing else. Throws SystemError when it cannot be started.
    virtual std::unique_ptr<Process> launch(const FileURL &executable, const QStringList &arguments) = 0;

    /// Asks every process to end that was started here, is held by somebody and still runs.
    virtual void terminateAll() = 0;
};
