#pragma once

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

/// The initial state of a private desktop's home folder.
struct HomeOptions {
    /// Transcription language code: en, ro or auto.
    QString language = QStringLiteral("auto");
    QString whisperCLI;
    /// Path of the speech model; if empty, the program searches for one.
    QString model;
    /// Further settings by key; the interface is English by default.
    QJsonObject settings {};
};

/// Declares `--language`, `--whisper-cli` and `--model`.
void addHomeOptions(QCommandLineParser &parser);

/// The parsed options.
HomeOptions homeOptions(const QCommandLineParser &parser);

/// Installs this whisper-cli where the program looks first, in the XDG folders of this process.
bool installWhisperCLI(const QString &path);

/// Installs whisper-cli, if given, and writes the settings. By default the wizard is completed and there is
/// no Ollama.
bool prepareHome(const HomeOptions &options);

/// Where the program keeps history and recordings.
QString dataFolder();

/// The settings file of the home.
QString settingsPath();

/// The recordings that the program keeps in the home, newest first.
QStringList keptRecordings();

/// The entries of the program's history file, newest first; empty if there is no file.
QJsonArray historyEntries();
