#pragma once

#include "Foundation/FileURL.h"
#include "Platform/FileManager.h"

#include <QStringList>
#include <QUuid>

#include <optional>

/// What whisper-cli is run with.
struct WhisperCLIConfiguration {
    FileURL binaryURL;
    FileURL modelURL;
    /// A language code, or "auto"; passed on unchecked.
    QString language = QStringLiteral("ro");
    /// Where transcripts are written; see `defaultOutputDirectoryURL`.
    FileURL outputDirectoryURL;
    /// Stands in the argument vector as it is.
    QStringList extraArguments;
    /// Limit of a run; absent, zero or less means none.
    std::optional<double> executionTimeoutSeconds;

    /// The usual folder for transcripts, among the temporary files.
    static FileURL defaultOutputDirectoryURL(const FileManager &fileManager);
};

/// One call of whisper-cli, ready to be started.
struct WhisperCLICommand {
    FileURL executableURL;
    /// Without the program name.
    QStringList arguments;
    /// Where the transcript lies after a successful run.
    FileURL outputTextURL;

    friend bool operator==(const WhisperCLICommand &, const WhisperCLICommand &) = default;
};

/// Makes commands after checking that all that a run needs is in place. The only place that knows the command
/// line of whisper-cli.
class WhisperCLICommandBuilder {
public:
    /// The file manager must outlive the builder.
    WhisperCLICommandBuilder(WhisperCLIConfiguration config, FileManager &fileManager);

    /// The command that transcribes `audioFileURL`; creates the output folder. Throws
    /// TranscriptionEngineError for the first thing that is missing.
    WhisperCLICommand makeCommand(
        const FileURL &audioFileURL, const QUuid &transcriptionID = QUuid::createUuid()) const;

private:
    void checkInputs(const FileURL &audioFileURL) const;
    void createOutputDirectory() const;

    WhisperCLIConfiguration m_config;
    FileManager &m_fileManager;
};
