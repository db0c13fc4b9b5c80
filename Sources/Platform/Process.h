#pragma once

#include "Foundation/FileURL.h"

#include <QByteArray>
#include <QStringList>

#include <memory>

/// A started child process. Its standard output and standard error go to pipes that are read only on request.
/// One thread at a time.
class Process {
public:
    /// A process that is still running is not ended but continues detached.
    virtual ~Process() = default;

    /// Whether the process has not ended yet.
    virtual bool isRunning() = 0;

    /// Sends SIGTERM. The process may end late or never.
    virtual void terminate() = 0;

    /// Waits until the process has ended, at most `seconds` unless negative. Returns whether it has ended.
    virtual bool waitUntilExit(double seconds = -1) = 0;

    /// The exit code, or the number of the signal that ended the process. Only after it has ended.
    virtual int terminationStatus() const = 0;

    /// The rest of the standard error pipe. Only after the process has ended.
    virtual QByteArray readStandardError() = 0;

    /// The rest of the standard output pipe. Only after the process has ended.
    virtual QByteArray readStandardOutput() = 0;
};

/// Starts processes. Any thread may call it.
class ProcessLauncher {
public:
    virtual ~ProcessLauncher() = default;

    /// Starts `executable` with `arguments`; it inherits only working directory, environment and standard
    /// input. Throws SystemError if it cannot be started.
    virtual std::unique_ptr<Process> launch(const FileURL &executable, const QStringList &arguments) = 0;

    /// Terminates every running process started here whose Process object still exists.
    virtual void terminateAll() = 0;
};
