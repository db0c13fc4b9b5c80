#include "TolmiCore/TolmiDefaultPaths.h"

#include "Support/FakeFileManager.h"

#include <gtest/gtest.h>

namespace {
class TolmiDefaultPathsTest : public testing::Test {
protected:
    TolmiDefaultPathsTest() { m_files.current = FileURL(QStringLiteral("/cwd")); }

    /// A program at `programArgument`, in the folder or bundle `bundle`.
    void setProgram(const char *programArgument, const char *bundle) {
        m_bundle = { QString::fromUtf8(programArgument), FileURL(QString::fromUtf8(bundle)) };
    }

    TolmiDefaultPaths::SearchContext context() const { return { m_files, m_bundle }; }

    static QStringList paths(const std::vector<FileURL> &urls) {
        QStringList paths;
        for (const FileURL &url : urls)
            paths.append(url.path());
        return paths;
    }

    /// The folders that are searched for models, in order.
    QStringList modelFolders(const std::optional<FileURL> &current = std::nullopt) const {
        QStringList folders;
        for (const FileURL &url : TolmiDefaultPaths::modelCandidates(context(), current)) {
            const QString folder = url.deletingLastPathComponent().path();
            if (folders.isEmpty() || folders.last() != folder)
                folders.append(folder);
        }
        return folders;
    }

    static QStringList withModels(const QStringList &roots) {
        QStringList folders { QStringLiteral("/home/user/.local/share/Tolmi/models") };
        for (const QString &root : roots)
            folders.append((root == u"/" ? QString() : root) + QStringLiteral("/.models"));
        return folders;
    }

    FakeFileManager m_files;
    BundleInfo m_bundle { {}, FileURL(QStringLiteral("/b")) };
};

TEST_F(TolmiDefaultPathsTest, HasElevenModelsInOrder) {
    const QStringList expected = QStringLiteral("ggml-large-v3.bin ggml-large-v3-turbo.bin ggml-large-v2.bin "
                                                "ggml-large-v1.bin ggml-large.bin ggml-medium.bin "
                                                "ggml-small.bin ggml-base.bin ggml-medium.en.bin "
                                                "ggml-small.en.bin ggml-base.en.bin")
                                     .split(u' ');
    EXPECT_EQ(TolmiDefaultPaths::modelFileNames(), expected);
}

TEST_F(TolmiDefaultPathsTest, RootsAreCurrentDirectoryThenProgramThenBundle) {
    setProgram("/opt/tolmi/bin/tolmi", "/srv/x");
    EXPECT_EQ(modelFolders(),
        withModels({ QStringLiteral("/cwd"), QStringLiteral("/opt/tolmi/bin"), QStringLiteral("/opt/tolmi"),
            QStringLiteral("/opt"), QStringLiteral("/"), QStringLiteral("/srv/x"), QStringLiteral("/srv") }));
}

TEST_F(TolmiDefaultPathsTest, AnEmptyProgramArgumentAddsNothing) {
    setProgram("", "/srv/x");
    EXPECT_EQ(modelFolders(),
        withModels({ QStringLiteral("/cwd"), QStringLiteral("/srv/x"), QStringLiteral("/srv"),
            QStringLiteral("/") }));
}

TEST_F(TolmiDefaultPathsTest, SearchesEightProgramAncestorsAndSixBundleAncestors) {
    setProgram("/1/2/3/4/5/6/7/8/9/10/program", "/a/b/c/d/e/f/g/h");
    const QStringList folders = modelFolders();
    EXPECT_EQ(folders.size(), 1 + 1 + 9 + 7);
    EXPECT_EQ(folders[2], QStringLiteral("/1/2/3/4/5/6/7/8/9/10/.models"));
    EXPECT_EQ(folders[10], QStringLiteral("/1/2/.models"));
    EXPECT_EQ(folders[11], QStringLiteral("/a/b/c/d/e/f/g/h/.models"));
    EXPECT_EQ(folders[17], QStringLiteral("/a/b/.models"));
}

TEST_F(TolmiDefaultPathsTest, ABundleAddsTheAncestorsOfItsFolder) {
    setProgram("", "/1/2/3/4/5/6/7/T.app");
    // Six ancestors of the bundle reach /1; six ancestors of its folder go one further.
    EXPECT_EQ(modelFolders().last(), QStringLiteral("/1/.models"));
    setProgram("", "/0/1/2/3/4/5/6/7/T.app");
    EXPECT_EQ(modelFolders().last(), QStringLiteral("/0/1/.models"));
    setProgram("", "/0/1/2/3/4/5/6/7/T.App");
    EXPECT_EQ(modelFolders().last(), QStringLiteral("/0/1/2/.models"));
}

TEST_F(TolmiDefaultPathsTest, DuplicatesKeepTheFirstForm) {
    setProgram("/home/./me/x/../bin/tolmi", "/home/me/bin");
    EXPECT_EQ(modelFolders(FileURL(QStringLiteral("/home//me"))),
        withModels({ QStringLiteral("/home//me"), QStringLiteral("/home/me/bin"), QStringLiteral("/home"),
            QStringLiteral("/") }));
}

TEST_F(TolmiDefaultPathsTest, BinariesAreTriedRootByRoot) {
    setProgram("", "/");
    EXPECT_EQ(paths(TolmiDefaultPaths::whisperBinaryCandidates(context())),
        (QStringList {
            QStringLiteral("/home/user/.local/share/Tolmi/tools/whisper-cli"),
            QStringLiteral("/cwd/.tools/whisper-cli"),
            QStringLiteral("/cwd/.vendor/whisper.cpp/build/bin/whisper-cli"),
            QStringLiteral("/cwd/.vendor/whisper.cpp/build/bin/main"),
            QStringLiteral("/.tools/whisper-cli"),
            QStringLiteral("/.vendor/whisper.cpp/build/bin/whisper-cli"),
            QStringLiteral("/.vendor/whisper.cpp/build/bin/main"),
            QStringLiteral("/opt/homebrew/bin/whisper-cli"),
            QStringLiteral("/usr/local/bin/whisper-cli"),
        }));
}

TEST_F(TolmiDefaultPathsTest, AllModelsAreTriedInOneRootBeforeTheNext) {
    setProgram("", "/");
    const auto candidates = TolmiDefaultPaths::modelCandidates(context());
    ASSERT_EQ(candidates.size(), 33U);
    const QStringList names = TolmiDefaultPaths::modelFileNames();
    for (size_t index = 0; index < candidates.size(); ++index)
        EXPECT_EQ(candidates[index].lastPathComponent(), names[qsizetype(index % 11)]);
    EXPECT_EQ(candidates[10].path(), QStringLiteral("/home/user/.local/share/Tolmi/models/ggml-base.en.bin"));
    EXPECT_EQ(candidates[11].path(), QStringLiteral("/cwd/.models/ggml-large-v3.bin"));
}

TEST_F(TolmiDefaultPathsTest, WithoutApplicationSupportTheOtherLocationsRemain) {
    setProgram("", "/");
    m_files.applicationSupport = std::nullopt;
    EXPECT_EQ(TolmiDefaultPaths::whisperBinaryCandidates(context()).front().path(),
        QStringLiteral("/cwd/.tools/whisper-cli"));
    EXPECT_EQ(TolmiDefaultPaths::modelCandidates(context()).size(), 22U);
    EXPECT_EQ(TolmiDefaultPaths::defaultWhisperBinaryURL(context()).path(),
        QStringLiteral("/cwd/.tools/whisper-cli"));
}

TEST_F(TolmiDefaultPathsTest, TheCurrentDirectoryCanBeGiven) {
    const FileURL other(QStringLiteral("/other"));
    EXPECT_EQ(TolmiDefaultPaths::whisperBinaryCandidates(context(), other)[1].path(),
        QStringLiteral("/other/.tools/whisper-cli"));
    EXPECT_EQ(modelFolders(other)[1], QStringLiteral("/other/.models"));
    EXPECT_EQ(TolmiDefaultPaths::defaultModelURL(context(), other).path(),
        QStringLiteral("/other/.models/ggml-large-v3.bin"));
    EXPECT_EQ(TolmiDefaultPaths::legacyDefaultModelURL(context(), other).path(),
        QStringLiteral("/other/.models/ggml-base.en.bin"));
}

TEST_F(TolmiDefaultPathsTest, ReturnsAPathEvenIfNothingExists) {
    EXPECT_EQ(TolmiDefaultPaths::defaultWhisperBinaryURL(context()).path(),
        QStringLiteral("/home/user/.local/share/Tolmi/tools/whisper-cli"));
    EXPECT_EQ(TolmiDefaultPaths::defaultModelURL(context()).path(),
        QStringLiteral("/cwd/.models/ggml-large-v3.bin"));
}

TEST_F(TolmiDefaultPathsTest, TheLegacyModelIsFixed) {
    EXPECT_EQ(TolmiDefaultPaths::legacyDefaultModelURL(context()).path(),
        QStringLiteral("/cwd/.models/ggml-base.en.bin"));
    EXPECT_TRUE(m_files.calls.empty());
}

TEST_F(TolmiDefaultPathsTest, SkipsANonExecutableBinary) {
    m_files.files[QStringLiteral("/home/user/.local/share/Tolmi/tools/whisper-cli")];
    m_files.addExecutable(QStringLiteral("/usr/local/bin/whisper-cli"));
    EXPECT_EQ(TolmiDefaultPaths::defaultWhisperBinaryURL(context()).path(),
        QStringLiteral("/usr/local/bin/whisper-cli"));
    m_files.addExecutable(QStringLiteral("/cwd/.vendor/whisper.cpp/build/bin/main"));
    EXPECT_EQ(TolmiDefaultPaths::defaultWhisperBinaryURL(context()).path(),
        QStringLiteral("/cwd/.vendor/whisper.cpp/build/bin/main"));
}

TEST_F(TolmiDefaultPathsTest, SkipsFilesThatOthersMayHaveCreated) {
    setProgram("bin/tolmi", "/b");
    const QString binary = QStringLiteral("/b/.tools/whisper-cli");
    const QString model = QStringLiteral("/b/.models/ggml-base.bin");
    m_files.addExecutable(QStringLiteral("/cwd/.tools/whisper-cli"));
    m_files.files[QStringLiteral("/cwd/.models/ggml-large-v3.bin")];
    m_files.addExecutable(binary);
    m_files.files[model];
    m_files.opened = { QStringLiteral("/cwd") };
    EXPECT_EQ(TolmiDefaultPaths::defaultWhisperBinaryURL(context()).path(), binary);
    EXPECT_EQ(TolmiDefaultPaths::defaultModelURL(context()).path(), model);
}

TEST_F(TolmiDefaultPathsTest, NeverReturnsALocationThatOthersCanWriteTo) {
    const QString planted = QStringLiteral("/cwd/.models/ggml-large-v3.bin");
    m_files.files[planted];
    m_files.addExecutable(QStringLiteral("/cwd/.tools/whisper-cli"));
    m_files.opened = { QStringLiteral("/cwd"), QStringLiteral("/home/user/.local/share/Tolmi/tools") };
    EXPECT_EQ(TolmiDefaultPaths::defaultModelURL(context()).path(),
        QStringLiteral("/home/user/.local/share/Tolmi/models/ggml-large-v3.bin"));
    EXPECT_EQ(TolmiDefaultPaths::defaultWhisperBinaryURL(context()).path(),
        QStringLiteral("/b/.tools/whisper-cli"));
    // No other location is left.
    m_files.opened = { QStringLiteral("/") };
    EXPECT_EQ(TolmiDefaultPaths::defaultModelURL(context()).path(), planted);
    EXPECT_EQ(TolmiDefaultPaths::defaultWhisperBinaryURL(context()).path(),
        QStringLiteral("/home/user/.local/share/Tolmi/tools/whisper-cli"));
}

struct ModelChoice {
    const char *better;
    const char *worse;
};

class TolmiDefaultModel : public TolmiDefaultPathsTest, public testing::WithParamInterface<ModelChoice> { };

TEST_P(TolmiDefaultModel, IsTheBetterPlacedOne) {
    const QString better = QString::fromUtf8(GetParam().better);
    m_files.files[QString::fromUtf8(GetParam().worse)];
    m_files.files[better];
    EXPECT_EQ(TolmiDefaultPaths::defaultModelURL(context()).path(), better);
}

INSTANTIATE_TEST_SUITE_P(Table, TolmiDefaultModel,
    testing::Values(ModelChoice { "/home/user/.local/share/Tolmi/models/ggml-base.bin",
                        "/cwd/.models/ggml-large-v3.bin" },
        ModelChoice { "/cwd/.models/ggml-large-v3.bin", "/cwd/.models/ggml-large-v3-turbo.bin" },
        ModelChoice { "/cwd/.models/ggml-base.bin", "/cwd/.models/ggml-medium.en.bin" },
        ModelChoice { "/cwd/.models/ggml-base.en.bin", "/b/.models/ggml-large-v3.bin" },
        ModelChoice { "/b/.models/ggml-base.en.bin", "/cwd/.models/ggml-tiny.bin" }));
} // namespace
