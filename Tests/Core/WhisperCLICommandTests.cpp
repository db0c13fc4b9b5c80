#include "TolmiCore/WhisperCLICommand.h"

#include "Support/FakeFileManager.h"
#include "TolmiCore/TranscriptionEngine.h"

#include <gtest/gtest.h>

namespace {
using EngineError = TranscriptionEngineError;

const QUuid identity = QUuid(QStringLiteral("{0a1b2c3d-4e5f-6789-abcd-ef0123456789}"));

class WhisperCLICommandTest : public testing::Test {
protected:
    WhisperCLICommandTest() {
        m_config.binaryURL = binary;
        m_config.modelURL = model;
        m_config.outputDirectoryURL = output;
        m_files.addExecutable(binary.path());
        m_files.files[model.path()];
        m_files.files[audio.path()];
    }

    WhisperCLICommand command() {
        return WhisperCLICommandBuilder(m_config, m_files).makeCommand(audio, identity);
    }

    /// The error of a call; fails the test if there is none.
    EngineError error() {
        try {
            command();
        } catch (const EngineError &error) {
            return error;
        }
        ADD_FAILURE() << "no error";
        return EngineError(EngineError::OutputMissing {});
    }

    const FileURL binary { QStringLiteral("/bin/whisper-cli") };
    const FileURL model { QStringLiteral("/models/a model.bin") };
    const FileURL audio { QStringLiteral("/cache/recording 1.wav") };
    const FileURL output { QStringLiteral("/tmp/deep/transcripts") };
    const QString base = QStringLiteral("/tmp/deep/transcripts/0A1B2C3D-4E5F-6789-ABCD-EF0123456789");
    FakeFileManager m_files;
    WhisperCLIConfiguration m_config;
};

TEST_F(WhisperCLICommandTest, HasNineArgumentsWithoutExtraOnes) {
    const QStringList expected { QStringLiteral("-m"), model.path(), QStringLiteral("-f"), audio.path(),
        QStringLiteral("-l"), QStringLiteral("ro"), QStringLiteral("-otxt"), QStringLiteral("-of"), base };
    EXPECT_EQ(command(), (WhisperCLICommand { binary, expected, FileURL(base + QStringLiteral(".txt")) }));
}

TEST_F(WhisperCLICommandTest, ExtraArgumentsFollowTheLanguage) {
    m_config.extraArguments = QStringLiteral("-bo 2 -bs 2 -tp 0").split(u' ');
    const QStringList arguments = command().arguments;
    EXPECT_EQ(arguments.size(), 15);
    EXPECT_EQ(arguments.mid(6, 6), m_config.extraArguments);
    EXPECT_EQ(arguments[12], QStringLiteral("-otxt"));
}

TEST_F(WhisperCLICommandTest, AcceptsAnyLanguage) {
    for (const QString &language : { QStringLiteral("auto"), QStringLiteral("xx"), QString() }) {
        m_config.language = language;
        EXPECT_EQ(command().arguments[5], language);
    }
}

TEST_F(WhisperCLICommandTest, ReportsEachMissingItem) {
    m_files.files.erase(audio.path());
    EXPECT_EQ(error(), EngineError(EngineError::MissingAudioFile { audio }));
    m_files.files.erase(model.path());
    EXPECT_EQ(error(), EngineError(EngineError::MissingModel { model }));
    m_files.executables.clear();
    EXPECT_EQ(error(), EngineError(EngineError::MissingBinary { binary }));
    m_files.files.erase(binary.path());
    EXPECT_EQ(error(), EngineError(EngineError::MissingBinary { binary }));
    EXPECT_FALSE(m_files.fileExists(output.path()));
}

TEST_F(WhisperCLICommandTest, EmptyPathsAreMissing) {
    m_config.modelURL = FileURL();
    EXPECT_EQ(error(), EngineError(EngineError::MissingModel {}));
    m_config.binaryURL = FileURL();
    EXPECT_EQ(error(), EngineError(EngineError::MissingBinary {}));
}

TEST_F(WhisperCLICommandTest, CreatesTheOutputFolderEachTime) {
    command();
    EXPECT_TRUE(m_files.fileExists(output.path()));
    m_files.folders = { QStringLiteral("/") };
    command();
    EXPECT_TRUE(m_files.fileExists(output.path()));
}

TEST_F(WhisperCLICommandTest, ChecksInOrder) {
    command();
    const std::vector<FakeFileManager::Call> expected {
        { QStringLiteral("isExecutableFile"), binary.path() },
        { QStringLiteral("fileExists"), model.path() },
        { QStringLiteral("fileExists"), audio.path() },
        { QStringLiteral("createDirectory"), output.path() },
    };
    EXPECT_EQ(m_files.calls, expected);
}

TEST_F(WhisperCLICommandTest, ReportsAnOutputFolderThatCannotBeCreated) {
    m_files.files[output.path()];
    EXPECT_EQ(error(), EngineError(EngineError::CouldNotCreateOutputDirectory { output }));
    m_files.files.erase(output.path());
    m_files.createDirectoryFailures.push_back(SystemError(QStringLiteral("No space left")));
    EXPECT_EQ(error(), EngineError(EngineError::CouldNotCreateOutputDirectory { output }));
}

TEST_F(WhisperCLICommandTest, TheSameIdProducesTheSameCommand) {
    EXPECT_EQ(command(), command());
    const WhisperCLICommandBuilder builder(m_config, m_files);
    EXPECT_FALSE(builder.makeCommand(audio) == builder.makeCommand(audio));
}

TEST_F(WhisperCLICommandTest, TheDefaultOutputFolderIsTemporary) {
    EXPECT_EQ(WhisperCLIConfiguration::defaultOutputDirectoryURL(m_files).path(),
        m_files.temporary.path() + QStringLiteral("/tolmi-transcripts"));
}
} // namespace
