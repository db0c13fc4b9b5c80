#pragma once

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

/// How the home of a private desktop is set up before the program starts.
struct HomeOptions {
    /// Transcription language code: en, ro or auto.
    QString language = QStringLiteral("auto");
    QString whisperCLI;
    /// Path of the speech model; empty lets the program find one.
    QString model;
    /// Further settings by their keys; the interface is English unless one says otherwise.
    QJsonObject settings {};
};

/// Declares `--language`, `--whisper-cli` and `--model`.
void addHomeOptions(QCommandLineParser &parser);

/// What the user said about the home.
HomeOptions homeOptions(const QCommandLineParser &parser);

/// Puts this whisper-cli where the program looks first, in the XDG folders of this process.
bool installWhisperCLI(const QString &path);

/// Installs whisper-cli, if one is named, and writes the settings. The home is that of a user who has been
/// through the wizard and has no Ollama, unless the settings say otherwise.
bool prepareHome(const HomeOptions &options);

/// Where the program keeps history and recordings.
QString dataFolder();

/// The settings file of the home.
QString settingsPath();

/// The recordings that the program keeps in the home, newest first.
QStringList keptRecordings();

/// What stands in the program's history file, newest first; empty when there is no such file.
QJsonArray historyEntries();
