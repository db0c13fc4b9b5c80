#pragma once

#include <QString>

/// Writes one line of diagnostics to standard error, as it stands; any thread. Lines of this program start
/// "Tolmi: ".
void logLine(const QString &line);
