#pragma once

#include <QString>

/// Writes one line of diagnostics to standard error, as it stands; any thread. Lines of this program start
/// "Tolmi: ".
void logLine(const QString &line);

/// Writes the line as above and ends the process at once, for a state that must never be.
[[noreturn]] void fatalError(const QString &line);
