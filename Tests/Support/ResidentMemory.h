#pragma once

#include <QtGlobal>

/// Memory of this process that lies in RAM, in bytes.
qint64 residentMemory();

/// The most that residentMemory() was since resetPeakResidentMemory().
qint64 peakResidentMemory();

void resetPeakResidentMemory();
