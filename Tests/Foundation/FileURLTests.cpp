#include "Foundation/FileURL.h"

#include <QDir>

#include <gtest/gtest.h>

namespace {
struct Parts {
    const char *path;
    const char *stored;
    const char *lastPathComponent;
    const char *pathExtension;
    const char *parent;
};

class FileURLParts : public testing::TestWithParam<Parts> { };

TEST_P(FileURLParts, AreThoseOfThePath) {
    const Parts &parts = GetParam();
    const FileURL url(QString::fromUtf8(parts.path));
    EXPECT_EQ(url.path(), QString::fromUtf8(parts.stored));
    EXPECT_EQ(url.lastPathComponent(), QString::fromUtf8(parts.lastPathComponent));
    EXPECT_EQ(url.pathExtension(), QString::fromUtf8(parts.pathExtension));
    EXPECT_EQ(url.deletingLastPathComponent().path(), QString::fromUtf8(parts.parent));
}

INSTANTIATE_TEST_SUITE_P(Table, FileURLParts,
    testing::Values(Parts { "", "", "", "", "" }, Parts { "/", "/", "/", "", "/" },
        Parts { "///", "/", "/", "", "/" }, Parts { "/a", "/a", "a", "", "/" },
        Parts { "/a/", "/a", "a", "", "/" }, Parts { "/a/b.wav", "/a/b.wav", "b.wav", "wav", "/a" },
        Parts { "/a.b/c", "/a.b/c", "c", "", "/a.b" },
        Parts { "/a/b.tar.gz", "/a/b.tar.gz", "b.tar.gz", "gz", "/a" },
        Parts { "/a/.hidden", "/a/.hidden", ".hidden", "", "/a" },
        Parts { "/a/name.", "/a/name.", "name.", "", "/a" },
        Parts { "/Applications/T.app", "/Applications/T.app", "T.app", "app", "/Applications" },
        Parts { "/poză/ș t.wav", "/poză/ș t.wav", "ș t.wav", "wav", "/poză" }));

TEST(FileURL, ARelativePathIsResolvedAgainstTheCurrentDirectory) {
    EXPECT_EQ(FileURL(QStringLiteral("a/b")).path(), QDir::currentPath() + QStringLiteral("/a/b"));
}

TEST(FileURL, TildeHasNoMeaning) {
    EXPECT_EQ(FileURL(QStringLiteral("~/a")).path(), QDir::currentPath() + QStringLiteral("/~/a"));
    EXPECT_EQ(FileURL(QStringLiteral("/~/a")).path(), QStringLiteral("/~/a"));
}

TEST(FileURL, EqualsByPath) {
    EXPECT_EQ(FileURL(QStringLiteral("/a/")), FileURL(QStringLiteral("/a")));
    EXPECT_NE(FileURL(QStringLiteral("/a/../b")), FileURL(QStringLiteral("/b")));
    EXPECT_EQ(FileURL(), FileURL(QString()));
}

struct Pair {
    const char *given;
    const char *expected;
};

class FileURLStandardized : public testing::TestWithParam<Pair> { };

TEST_P(FileURLStandardized, FoldsDotsAndSlashes) {
    EXPECT_EQ(FileURL(QString::fromUtf8(GetParam().given)).standardizedFileURL().path(),
        QString::fromUtf8(GetParam().expected));
}

INSTANTIATE_TEST_SUITE_P(Table, FileURLStandardized,
    testing::Values(Pair { "", "" }, Pair { "/", "/" }, Pair { "/a/./b", "/a/b" }, Pair { "/a/../b", "/b" },
        Pair { "/a//b", "/a/b" }, Pair { "//a", "/a" }, Pair { "/a/..", "/" }, Pair { "/..", "/" },
        Pair { "/../..", "/" }, Pair { "/../a", "/a" }, Pair { "/a/../../b/", "/b" },
        Pair { "/..a/b", "/..a/b" }, Pair { "/...", "/..." }));

TEST(FileURL, AppendsOneOrSeveralComponents) {
    const FileURL base(QStringLiteral("/a"));
    EXPECT_EQ(base.appendingPathComponent(QStringLiteral("b")).path(), QStringLiteral("/a/b"));
    EXPECT_EQ(base.appendingPathComponent(QStringLiteral(".models/ggml.bin")).path(),
        QStringLiteral("/a/.models/ggml.bin"));
    EXPECT_EQ(base.appendingPathComponent(QStringLiteral("/b/")).path(), QStringLiteral("/a/b"));
    EXPECT_EQ(base.appendingPathComponent(QString()).path(), QStringLiteral("/a"));
    EXPECT_EQ(FileURL(QStringLiteral("/")).appendingPathComponent(QStringLiteral("b")).path(),
        QStringLiteral("/b"));
}
} // namespace
