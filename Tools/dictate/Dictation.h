#pragma once

#include "dictate/Editor.h"
#include "dictate/RunningProgram.h"
#include "dictate/VirtualUser.h"

#include <QString>

#include <optional>
#include <utility>
#include <vector>

/// A dictation's record in the program's history.
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

/// The course of one dictation, observed from outside.
struct DictationReport {
    /// States in order, with seconds since key-down.
    std::vector<std::pair<QString, double>> states;
    /// Seconds; absent if recording did not start.
    std::optional<double> keyDownToRecording;
    /// Seconds from key-up to the first key of the paste command, by the X server's clock.
    std::optional<double> keyUpToPaste;
    /// Seconds that the program waited for whisper-cli.
    std::optional<double> transcription;
    /// The editor's text afterwards.
    QString pasted;
    /// Whether the clipboard contained the user's text again afterwards.
    bool isClipboardRestored = false;
    /// The dictation's entry in the history file; absent if there is none.
    std::optional<HistoryRecord> history;
    /// The recording that the program kept; empty if there is none.
    QString recordingPath;
    /// Why the dictation did not finish; empty if it did.
    QString failure;
};

/// What a dictation needs.
struct DictationStage {
    VirtualUser &user;
    RunningProgram &program;
    Editor &editor;
};

/// Clears the editor, holds the key, plays the WAV file into the microphone, releases the key, waits until
/// the program is idle again, and reads the editor's text.
DictationReport dictate(const DictationStage &stage, const QString &wavPath);

/// Plays a WAV file to its end into the sink that feeds the microphone; false on failure.
bool playIntoMicrophone(const QString &wavPath);
