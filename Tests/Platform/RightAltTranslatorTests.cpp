#include "Platform/Linux/Keys/RightAltTranslator.h"

#include "Support/VirtualClock.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
using Key = RightAltTranslator::Key;

/// A key press or release `at` milliseconds after the start of the case.
struct Step {
    int at;
    Key key;
    bool isDown;
};

struct TranslatorCase {
    const char *name;
    bool typesLetters;
    std::vector<Step> steps;
    /// "<milliseconds> <key code><+ or - for the alternate flag, * for a chord>" for each event of the tap.
    std::vector<std::string> reports;
};

constexpr bool down = true;
constexpr bool up = false;
constexpr Key right = Key::RightAlt;
constexpr Key left = Key::LeftAlt;
constexpr Key other = Key::Other;
constexpr bool plain = false;
constexpr bool altGr = true;

/// Drives a translator on the virtual clock as the tap's thread does on the real one.
class TranslatorBench {
public:
    explicit TranslatorBench(bool typesLetters) { m_translator.setTypesLetters(typesLetters); }

    RightAltTranslator &translator() { return m_translator; }
    std::vector<std::string> reports;

    void play(const Step &step) {
        advanceTo(step.at);
        m_translator.keyChanged(step.key, step.isDown, seconds());
    }
    void advanceTo(int milliseconds) {
        const double end = milliseconds / 1000.0;
        if (const auto deadline = m_translator.deadline(); deadline && *deadline <= end) {
            m_clock.advance(*deadline - seconds());
            m_translator.advance(*deadline);
        }
        m_clock.advance(end - seconds());
    }

private:
    double seconds() const { return m_clock.now() - VirtualClock::start; }
    void report(const TapEvent &event) {
        EXPECT_EQ(event.flags & ~quint64(0x80000), 0);
        const bool isChord = event.type == TapEventType::ChordBegan;
        EXPECT_TRUE(isChord ? event.flags != 0 : event.type == TapEventType::FlagsChanged);
        const char flag = event.flags ? '+' : '-';
        reports.push_back(std::to_string(qRound(seconds() * 1000)) + ' ' + std::to_string(event.keyCode)
            + (isChord ? '*' : flag));
    }

    VirtualClock m_clock;
    RightAltTranslator m_translator { [this](const TapEvent &event) { report(event); } };
};

class RightAltTranslatorTests : public testing::TestWithParam<TranslatorCase> { };

TEST_P(RightAltTranslatorTests, Reports) {
    TranslatorBench bench(GetParam().typesLetters);
    for (const Step &step : GetParam().steps)
        bench.play(step);
    bench.advanceTo(5000);
    EXPECT_EQ(bench.reports, GetParam().reports);
}

INSTANTIATE_TEST_SUITE_P(Table, RightAltTranslatorTests,
    testing::Values(TranslatorCase { "plainPressAtOnce", plain, { { 0, right, down }, { 900, right, up } },
                        { "0 61+", "900 61-" } },
        TranslatorCase { "plainWithAnotherKey", plain,
            { { 0, right, down }, { 10, other, down }, { 20, other, up }, { 30, right, up } },
            { "0 61+", "10 61*", "30 61-" } },
        TranslatorCase { "plainKeyInTheLastMoment", plain,
            { { 0, right, down }, { 1000, other, down }, { 1030, right, up } },
            { "0 61+", "1000 61*", "1030 61-" } },
        TranslatorCase { "plainKeyThatComesTooLate", plain,
            { { 0, right, down }, { 1001, other, down }, { 1030, right, up } }, { "0 61+", "1030 61-" } },
        TranslatorCase { "onlyTheFirstKeyIsAChord", plain,
            { { 0, right, down }, { 100, other, down }, { 200, other, up }, { 300, other, down },
                { 900, right, up } },
            { "0 61+", "100 61*", "900 61-" } },
        TranslatorCase { "everyPressHasItsChord", plain,
            { { 0, right, down }, { 10, other, down }, { 20, right, up }, { 30, right, down },
                { 40, other, down }, { 50, right, up } },
            { "0 61+", "10 61*", "20 61-", "30 61+", "40 61*", "50 61-" } },
        TranslatorCase { "keyAfterTheReleaseIsNoChord", plain,
            { { 0, right, down }, { 100, right, up }, { 110, other, down } }, { "0 61+", "100 61-" } },
        TranslatorCase { "keyThatComesUpIsNoChordOnAPlainKey", plain,
            { { 0, other, down }, { 10, right, down }, { 20, other, up }, { 900, right, up } },
            { "10 61+", "900 61-" } },
        TranslatorCase { "leftAlt", plain, { { 0, left, down }, { 10, left, up } }, { "0 58+", "10 58-" } },
        TranslatorCase { "otherKeysAreSilent", plain, { { 0, other, down }, { 10, other, up } }, {} },
        TranslatorCase { "rightWhileLeftIsHeld", plain,
            { { 0, left, down }, { 10, right, down }, { 20, right, up }, { 30, left, up } },
            { "0 58+", "10 61+", "20 61+", "30 58-" } },
        TranslatorCase { "leftWhileRightIsHeld", plain,
            { { 0, right, down }, { 10, left, down }, { 20, right, up }, { 30, left, up } },
            { "0 61+", "10 58+", "20 61+", "30 58-" } },
        TranslatorCase {
            "heldBackUntilDue", altGr, { { 0, right, down }, { 900, right, up } }, { "250 61+", "900 61-" } },
        TranslatorCase { "chordStartsNothing", altGr,
            { { 0, right, down }, { 100, other, down }, { 150, other, up }, { 400, right, up } }, {} },
        TranslatorCase { "keyInTheLastMomentStartsNothing", altGr,
            { { 0, right, down }, { 249, other, down }, { 400, right, up } }, {} },
        TranslatorCase { "keyAtTheDueTimeIsTooLate", altGr,
            { { 0, right, down }, { 250, other, down }, { 400, right, up } },
            { "250 61+", "250 61*", "400 61-" } },
        TranslatorCase { "keyAfterTheHoldBackIsAChord", altGr,
            { { 0, right, down }, { 600, other, down }, { 650, other, up }, { 900, right, up } },
            { "250 61+", "600 61*", "900 61-" } },
        TranslatorCase { "theSecondIsThatOfThePress", altGr,
            { { 0, right, down }, { 1000, other, down }, { 2000, right, up } },
            { "250 61+", "1000 61*", "2000 61-" } },
        TranslatorCase { "laterKeyChangesNothing", altGr,
            { { 0, right, down }, { 1001, other, down }, { 1050, other, up }, { 1900, right, up } },
            { "250 61+", "1900 61-" } },
        TranslatorCase { "shortPressIsDownThenUp", altGr, { { 0, right, down }, { 80, right, up } },
            { "80 61+", "80 61-" } },
        TranslatorCase { "keyAfterAShortPressIsNoChord", altGr,
            { { 0, right, down }, { 80, right, up }, { 90, other, down } }, { "80 61+", "80 61-" } },
        TranslatorCase { "keyThatComesUpIsNoChord", altGr,
            { { 0, other, down }, { 20, right, down }, { 60, other, up }, { 900, right, up } },
            { "270 61+", "900 61-" } },
        TranslatorCase { "nextPressAfterAChordCounts", altGr,
            { { 0, right, down }, { 100, other, down }, { 200, right, up }, { 1000, right, down },
                { 2000, right, up } },
            { "1250 61+", "2000 61-" } },
        TranslatorCase { "secondChordStartsNothing", altGr,
            { { 0, right, down }, { 50, other, down }, { 90, right, up }, { 100, right, down },
                { 150, other, down }, { 190, right, up } },
            {} },
        TranslatorCase { "releaseOfAChordIsNoPressForTheLeftKey", altGr,
            { { 0, right, down }, { 50, other, down }, { 90, left, down }, { 100, right, up },
                { 150, left, up } },
            { "90 58+", "150 58-" } },
        TranslatorCase { "leftAltIsNoChord", altGr,
            { { 0, right, down }, { 100, left, down }, { 400, right, up } },
            { "100 58+", "250 61+", "400 61+" } },
        TranslatorCase { "shortPressWhileLeftIsHeld", altGr,
            { { 0, left, down }, { 100, right, down }, { 150, right, up }, { 200, left, up } },
            { "0 58+", "150 61+", "150 61+", "200 58-" } }),
    [](const auto &info) { return info.param.name; });

TEST(RightAltTranslatorStateTests, KnowsTheKeysThatWereHeldBefore) {
    TranslatorBench bench(plain);
    bench.translator().setInitialState(true, true);
    bench.play({ 0, right, up });
    bench.play({ 10, left, up });
    EXPECT_THAT(bench.reports, testing::ElementsAre("0 61+", "10 58-"));
}

TEST(RightAltTranslatorStateTests, APressFromBeforeTheFirstEventHasNoChord) {
    TranslatorBench bench(plain);
    bench.translator().setInitialState(true, false);
    bench.play({ 0, other, down });
    EXPECT_THAT(bench.reports, testing::IsEmpty());
}

TEST(RightAltTranslatorStateTests, ANewLayoutLeavesAHeldBackPressAlone) {
    TranslatorBench bench(altGr);
    bench.play({ 0, right, down });
    bench.translator().setTypesLetters(plain);
    bench.advanceTo(300);
    bench.play({ 300, right, up });
    bench.play({ 400, right, down });
    EXPECT_THAT(bench.reports, testing::ElementsAre("250 61+", "300 61-", "400 61+"));
}

TEST(RightAltTranslatorStateTests, HasNothingToWaitForWithoutAPress) {
    TranslatorBench bench(altGr);
    EXPECT_FALSE(bench.translator().deadline());
    bench.play({ 0, right, down });
    EXPECT_DOUBLE_EQ(bench.translator().deadline().value(), 0.25);
    bench.play({ 10, other, down });
    EXPECT_FALSE(bench.translator().deadline());
}
} // namespace
