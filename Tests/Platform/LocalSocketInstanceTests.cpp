#include "Platform/Desktop/LocalSocketInstance.h"

#include "Support/UntilTrue.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(LocalSocketInstance, TheFirstIsNotifiedOfTheSecond) {
    const QTemporaryDir folder;
    LocalSocketInstance first { FileURL(folder.path()), FileURL(folder.path()) };
    int laterStarts = 0;
    ASSERT_TRUE(first.claim([&laterStarts] { ++laterStarts; }));
    for (int start = 1; start <= 3; ++start) {
        LocalSocketInstance later { FileURL(folder.path()), FileURL(folder.path()) };
        EXPECT_FALSE(later.claim([] { FAIL() << "only the first is told"; }));
        EXPECT_TRUE(untilTrue([&] { return laterStarts == start; }));
    }
}

TEST(LocalSocketInstance, CanBeClaimedAgainAfterTheFirst) {
    const QTemporaryDir folder;
    {
        LocalSocketInstance first { FileURL(folder.path()), FileURL(folder.path()) };
        ASSERT_TRUE(first.claim([] {}));
    }
    LocalSocketInstance next { FileURL(folder.path()), FileURL(folder.path()) };
    EXPECT_TRUE(next.claim([] {}));
}

TEST(LocalSocketInstance, AnUnwritableFolderDoesNotPreventStarting) {
    const FileURL nowhere(QStringLiteral("/nowhere/at/all"));
    LocalSocketInstance instance { nowhere, nowhere };
    EXPECT_TRUE(instance.claim([] {}));
}

TEST(LocalSocketInstance, TheFirstIsFoundWithAnyTemporaryFolder) {
    const QTemporaryDir data;
    const QTemporaryDir one;
    const QTemporaryDir other;
    LocalSocketInstance first { FileURL(data.path()), FileURL(one.path()) };
    int laterStarts = 0;
    ASSERT_TRUE(first.claim([&laterStarts] { ++laterStarts; }));
    LocalSocketInstance later { FileURL(data.path()), FileURL(other.path()) };
    EXPECT_FALSE(later.claim([] {}));
    EXPECT_TRUE(untilTrue([&] { return laterStarts == 1; }));
}

TEST(LocalSocketInstance, UsesTheTemporaryFolderIfTheDataPathIsTooLong) {
    const QTemporaryDir temporary;
    const QString deep = temporary.filePath(QString(100, u'd'));
    ASSERT_TRUE(QDir().mkpath(deep));
    LocalSocketInstance first { FileURL(deep), FileURL(temporary.path()) };
    int laterStarts = 0;
    ASSERT_TRUE(first.claim([&laterStarts] { ++laterStarts; }));
    LocalSocketInstance later { FileURL(deep), FileURL(temporary.path()) };
    EXPECT_FALSE(later.claim([] {}));
    EXPECT_TRUE(untilTrue([&] { return laterStarts == 1; }));
}
