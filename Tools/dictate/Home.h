#pragma once

#include <QCommandLineParser>
#include <QString>

/// How the home of a private desktop is set up before the program starts.
struct HomeOptions {
    /// Transcription language code: en, ro or auto.
    QString language = QStringLiteral("auto");
    QString whisperCLI;
    /// Path of the speech model; empty lets the program find one.
    QString model;
};

/// Declares `--language`, `--whisper-cli` and `--model`.
void addHomeOptions(QCommandLineParser &parser);

/// What the user said about the home.
HomeOptions homeOptions(const QCommandLineParser &parser);

/// Puts whisper-cli where the program looks first and writes the settings, in the XDG folders of this
/// process.
bool prepareHome(const HomeOptions &options);
