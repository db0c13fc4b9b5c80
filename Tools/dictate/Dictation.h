#pragma once

#include "dictate/Editor.h"
#include "dictate/RunningProgram.h"
#include "dictate/VirtualUser.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

/// What the program's history says of a dictation.
struct HistoryRecord {
    QString target;
    QString bundleID;
    /// File name of the recording.
    QString recording;
    /// Transcription pass, "single" or "fallback".
    QString pass;
    /// Seconds of processing.
    double duration = 0;
};

/// What one dictation looked like from outside.
struct DictationReport {
    /// States in their order, with the seconds from key-down.
    std::vector<std::pair<QString, double>> states;
    /// Seconds; absent when it did not come to that.
    std::optional<double> keyDownToRecording;
    /// Seconds from the release of the key to the first key of the paste command, on the display's clock.
    std::optional<double> keyUpToPaste;
    /// Seconds that the program waited for whisper-cli.
    std::optional<double> transcription;
    /// What stood in the editor afterwards.
    QString pasted;
    /// Whether the clipboard held the user's own text again afterwards.
    bool isClipboardRestored = false;
    /// The entry that the dictation left in the history file; absent when it left none.
    std::optional<HistoryRecord> history;
    /// The recording that the program kept; empty when there is none.
    QString recordingPath;
    /// Why the dictation did not end; empty when it did.
    QString failure;
};

/// What a dictation works with.
struct DictationStage {
    VirtualUser &user;
    RunningProgram &program;
    Editor &editor;
};

/// Holds the key, plays the WAV file into the microphone, lets go, waits until the program is idle again, and
/// reads what stands in the editor. The editor is emptied before.
DictationReport dictate(const DictationStage &stage, const QString &wavPath);

/// Plays a WAV file into the sink that feeds the microphone, to its end; false when that fails.
bool playIntoMicrophone(const QString &wavPath);
