#pragma once

#include <QString>

/// Writes one line to standard error, unchanged; any thread. This program's lines start with "Tolmi: ".
void logLine(const QString &line);

/// Writes the line as above and aborts the process; for states that must never occur.
[[noreturn]] void fatalError(const QString &line);
