#include "Platform/Desktop/LocalSocketInstance.h"

#include "Support/UntilTrue.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

TEST(LocalSocketInstance, TheFirstHearsOfTheSecond) {
    const QTemporaryDir folder;
    LocalSocketInstance first { FileURL(folder.path()) };
    int laterStarts = 0;
    ASSERT_TRUE(first.claim([&laterStarts] { ++laterStarts; }));
    for (int start = 1; start <= 3; ++start) {
        LocalSocketInstance later { FileURL(folder.path()) };
        EXPECT_FALSE(later.claim([] { FAIL() << "only the first is told"; }));
        EXPECT_TRUE(untilTrue([&] { return laterStarts == start; }));
    }
}

TEST(LocalSocketInstance, ThePlaceIsFreeAgainAfterTheFirst) {
    const QTemporaryDir folder;
    {
        LocalSocketInstance first { FileURL(folder.path()) };
        ASSERT_TRUE(first.claim([] {}));
    }
    LocalSocketInstance next { FileURL(folder.path()) };
    EXPECT_TRUE(next.claim([] {}));
}

TEST(LocalSocketInstance, AFolderThatCannotBeWrittenKeepsNobodyFromStarting) {
    LocalSocketInstance instance { FileURL(QStringLiteral("/nowhere/at/all")) };
    EXPECT_TRUE(instance.claim([] {}));
}
