#include "TolmiApp/Updates/UpdateTexts.h"

#include "Support/Print.h"

#include <QMetaEnum>

#include <gtest/gtest.h>

#include <set>

using UpdateTexts::Key;

namespace {
const std::set<Key> withVersion { Key::foundTitle, Key::foundHint, Key::upToDateHint, Key::downloadingTitle,
    Key::downloadedTitle };

std::vector<Key> allKeys() {
    std::vector<Key> keys;
    for (int index = 0; index < QMetaEnum::fromType<Key>().keyCount(); ++index)
        keys.push_back(Key(index));
    return keys;
}
} // namespace

TEST(UpdateTexts, AreThereInBothLanguagesAndDiffer) {
    for (const Key key : allKeys()) {
        const QString english = UpdateTexts::text(key, AppLanguage::English);
        const QString romanian = UpdateTexts::text(key, AppLanguage::Romanian);
        EXPECT_FALSE(english.isEmpty()) << int(key);
        EXPECT_FALSE(romanian.isEmpty()) << int(key);
        EXPECT_NE(english, romanian);
    }
}

TEST(UpdateTexts, AreWrittenWithoutDiacritics) {
    for (const Key key : allKeys()) {
        for (const QChar letter : UpdateTexts::text(key, AppLanguage::Romanian))
            EXPECT_LT(letter.unicode(), 0x80) << int(key);
    }
}

TEST(UpdateTexts, HaveAPlaceForTheVersionWhereTheyNameIt) {
    for (const Key key : allKeys()) {
        for (const AppLanguage language : { AppLanguage::English, AppLanguage::Romanian }) {
            const bool isExpected = withVersion.contains(key);
            EXPECT_EQ(UpdateTexts::text(key, language).count(QStringLiteral("%1")), isExpected) << int(key);
            EXPECT_EQ(UpdateTexts::text(key, language, QStringLiteral("2.0")).contains(QStringLiteral("2.0")),
                isExpected)
                << int(key);
        }
    }
}

TEST(UpdateTexts, TakeAVersionAsItStands) {
    EXPECT_EQ(UpdateTexts::text(Key::foundTitle, AppLanguage::English, QStringLiteral("%1 & <b>")),
        QStringLiteral("Tolmi %1 & <b> is available"));
}
