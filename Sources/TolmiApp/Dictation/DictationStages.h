#pragma once

#include "Foundation/Date.h"
#include "TolmiApp/Contracts/DictationState.h"

/// The stages of a dictation as diagnostics in the log category "tolmi.stages", which is off by default.

/// "ready": the key is watched.
void logReady();

/// The first frame of the Studio is on the screen.
void logStudioShown();

/// "state NAME INSTANT", the instant in seconds since 1970.
void logStage(const DictationState &state, Date instant);

/// "transcribed SECONDS".
void logTranscriptionTime(double seconds);
