#include "TolmiCore/WhisperCLICommand.h"

#include "TolmiCore/TranscriptionEngine.h"

using EngineError = TranscriptionEngineError;

FileURL WhisperCLIConfiguration::defaultOutputDirectoryURL(const FileManager &fileManager) {
    return fileManager.temporaryDirectory().appendingPathComponent(QStringLiteral("tolmi-transcripts"));
}

WhisperCLICommandBuilder::WhisperCLICommandBuilder(WhisperCLIConfiguration config, FileManager &fileManager)
    : m_config(std::move(config))
    , m_fileManager(fileManager) { }

WhisperCLICommand WhisperCLICommandBuilder::makeCommand(
    const FileURL &audioFileURL, const QUuid &transcriptionID) const {
    checkInputs(audioFileURL);
    const QString baseName = transcriptionID.toString(QUuid::WithoutBraces).toUpper();
    const FileURL outputBase = m_config.outputDirectoryURL.appendingPathComponent(baseName);
    createOutputDirectory();

    QStringList arguments { QStringLiteral("-m"), m_config.modelURL.path(), QStringLiteral("-f"),
        audioFileURL.path(), QStringLiteral("-l"), m_config.language };
    arguments += m_config.extraArguments;
    arguments += { QStringLiteral("-otxt"), QStringLiteral("-of"), outputBase.path() };
    return { m_config.binaryURL, arguments, FileURL(outputBase.path() + QStringLiteral(".txt")) };
}

void WhisperCLICommandBuilder::checkInputs(const FileURL &audioFileURL) const {
    if (!m_fileManager.isExecutableFile(m_config.binaryURL.path()))
        throw EngineError(EngineError::MissingBinary { m_config.binaryURL });
    if (!m_fileManager.fileExists(m_config.modelURL.path()))
        throw EngineError(EngineError::MissingModel { m_config.modelURL });
    if (!m_fileManager.fileExists(audioFileURL.path()))
        throw EngineError(EngineError::MissingAudioFile { audioFileURL });
}

void WhisperCLICommandBuilder::createOutputDirectory() const {
    try {
        m_fileManager.createDirectory(m_config.outputDirectoryURL);
    } catch (const SystemError &) {
        throw EngineError(EngineError::CouldNotCreateOutputDirectory { m_config.outputDirectoryURL });
    }
}
