#include "Platform/Linux/Pulse/PulseSystemSounds.h"
#include "TolmiApp/Settings/ProcessingTransitionSound.h"

#include <QStringList>

#include <gtest/gtest.h>

namespace {
using Sound = ProcessingTransitionSound;

TEST(ProcessingTransitionSound, KeepsOrderRawValuesAndNames) {
    const QStringList expected { QStringLiteral("none -"), QStringLiteral("funk Funk"),
        QStringLiteral("submarine Submarine"), QStringLiteral("blow Blow"), QStringLiteral("morse Morse"),
        QStringLiteral("pop Pop"), QStringLiteral("bottle Bottle"), QStringLiteral("frog Frog"),
        QStringLiteral("purr Purr"), QStringLiteral("sosumi Sosumi"), QStringLiteral("tink Tink"),
        QStringLiteral("hero Hero"), QStringLiteral("glass Glass"), QStringLiteral("basso Basso"),
        QStringLiteral("ping Ping") };
    QStringList cases;
    for (const Sound sound : allCases<Sound>())
        cases.append(rawValue(sound) + u' ' + systemSoundName(sound).value_or(QStringLiteral("-")));
    EXPECT_EQ(cases, expected);
}

TEST(ProcessingTransitionSound, CanBePlayedForEveryChoiceButSilence) {
    PulseConnection connection;
    PulseSystemSounds sounds(connection);
    for (const Sound choice : allCases<Sound>()) {
        const auto sound = sounds.named(systemSoundName(choice).value_or(QString()));
        EXPECT_EQ(sound != nullptr, choice != Sound::None) << rawValue(choice).toStdString();
    }
}

TEST(ProcessingTransitionSound, MatchesStoredTextsExactly) {
    EXPECT_EQ(rawValueOrDefault<Sound>(QStringLiteral("none")), Sound::None);
    EXPECT_EQ(rawValueOrDefault<Sound>(QStringLiteral("ping")), Sound::Ping);
    for (const char *unknown : { "", "Ping", "PING", " ping", "trumpet" })
        EXPECT_EQ(rawValueOrDefault<Sound>(QString::fromUtf8(unknown)), Sound::Hero) << unknown;
}
} // namespace
