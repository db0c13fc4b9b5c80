#pragma once

#include "Foundation/FileURL.h"
#include "Platform/FileManager.h"

#include <QStringList>
#include <QUuid>

#include <optional>

/// How whisper-cli is run.
struct WhisperCLIConfiguration {
    FileURL binaryURL;
    FileURL modelURL;
    /// A language code, or "auto"; passed on unchecked.
    QString language = QStringLiteral("ro");
    /// Where transcripts are written; see `defaultOutputDirectoryURL`.
    FileURL outputDirectoryURL;
    /// Added to the argument vector unchanged.
    QStringList extraArguments;
    /// Time limit of a run; absent, zero or less means none.
    std::optional<double> executionTimeoutSeconds;

    /// The usual folder for transcripts, among the temporary files.
    static FileURL defaultOutputDirectoryURL(const FileManager &fileManager);
};

/// One call of whisper-cli, ready to be started.
struct WhisperCLICommand {
    FileURL executableURL;
    /// Without the program name.
    QStringList arguments;
    /// Where a successful run leaves the transcript.
    FileURL outputTextURL;

    friend bool operator==(const WhisperCLICommand &, const WhisperCLICommand &) = default;
};

/// Builds commands, after checking that everything a run needs exists. The only code that knows the command
/// line of whisper-cli.
class WhisperCLICommandBuilder {
public:
    /// The file manager must outlive the builder.
    WhisperCLICommandBuilder(WhisperCLIConfiguration config, FileManager &fileManager);

    /// The command that transcribes `audioFileURL`; creates the output folder. Throws
    /// TranscriptionEngineError for the first missing item.
    WhisperCLICommand makeCommand(
        const FileURL &audioFileURL, const QUuid &transcriptionID = QUuid::createUuid()) const;

private:
    void checkInputs(const FileURL &audioFileURL) const;
    void createOutputDirectory() const;

    WhisperCLIConfiguration m_config;
    FileManager &m_fileManager;
};
