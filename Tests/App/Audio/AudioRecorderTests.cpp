#include "TolmiApp/Audio/AudioRecorder.h"

#include "Support/FakeAudioFileRecorderFactory.h"
#include "Support/FakeMicrophonePermission.h"

#include <gtest/gtest.h>

namespace {
class AudioRecorderTest : public testing::Test {
protected:
    using Calls = std::vector<QString>;

    /// The answer of requestPermission, once given.
    std::optional<bool> answer;

    void ask() {
        launch([](AudioRecorderTest &test) -> Task<> {
            test.answer = co_await test.recorder.requestPermission();
        }(*this));
    }

    const Calls &callsOfRecorder(size_t index) const { return recorders.recorders.at(index)->calls; }

    const FileURL url { QStringLiteral("/cache/recording.wav") };
    FakeMicrophonePermission permission;
    FakeAudioFileRecorderFactory recorders;
    AudioRecorder recorder { permission, recorders };
};
} // namespace

TEST_F(AudioRecorderTest, ADecidedStatusAnswersAtOnceWithoutAPrompt) {
    const std::pair<AuthorizationStatus, bool> rows[] = {
        { AuthorizationStatus::Authorized, true },
        { AuthorizationStatus::Denied, false },
        { AuthorizationStatus::Restricted, false },
    };
    for (const auto &[status, isGranted] : rows) {
        permission.present = status;
        answer.reset();
        ask();
        EXPECT_EQ(answer, isGranted);
        EXPECT_TRUE(permission.questions.empty());
    }
}

TEST_F(AudioRecorderTest, AnUndecidedStatusWaitsForTheUser) {
    for (const bool isGranted : { true, false }) {
        permission.present = AuthorizationStatus::NotDetermined;
        answer.reset();
        ask();
        EXPECT_EQ(answer, std::nullopt);
        ASSERT_EQ(permission.questions.size(), 1U);
        permission.answerAll(isGranted);
        EXPECT_EQ(answer, isGranted);
    }
}

TEST_F(AudioRecorderTest, StartsARecorderOf16KilohertzMono16Bit) {
    recorders.replies = { {} };
    recorder.startRecording(url);
    ASSERT_EQ(recorders.recorders.size(), 1U);
    EXPECT_EQ(recorders.recorders[0]->url, url);
    EXPECT_EQ(recorders.recorders[0]->settings, (RecordingSettings { 16000, 1, 16 }));
    EXPECT_EQ(callsOfRecorder(0), (Calls { "prepareToRecord", "record" }));
}

TEST_F(AudioRecorderTest, StopEndsTheRecorderAndForgetsIt) {
    recorders.replies = { { .averagePower = -25 } };
    recorder.startRecording(url);
    recorder.stopRecording();
    EXPECT_EQ(callsOfRecorder(0), (Calls { "prepareToRecord", "record", "stop", "destroy" }));
    EXPECT_EQ(recorder.currentLevel(), 0.0);
}

TEST_F(AudioRecorderTest, StopWithoutARecordingIsHarmless) {
    recorder.stopRecording();
    EXPECT_TRUE(recorders.recorders.empty());
}

TEST_F(AudioRecorderTest, ASecondStartStopsTheFirst) {
    recorders.replies = { {}, {} };
    recorder.startRecording(url);
    recorder.startRecording(FileURL(QStringLiteral("/cache/second.wav")));
    EXPECT_EQ(callsOfRecorder(0), (Calls { "prepareToRecord", "record", "stop", "destroy" }));
    EXPECT_EQ(callsOfRecorder(1), (Calls { "prepareToRecord", "record" }));
}

TEST_F(AudioRecorderTest, ARecorderThatCannotStartIsNotKept) {
    const std::pair<FakeAudioFileRecorderFactory::Reply, Calls> rows[] = {
        { { .canPrepare = false, .averagePower = 0 }, { "prepareToRecord", "destroy" } },
        { { .canRecord = false, .averagePower = 0 }, { "prepareToRecord", "record", "destroy" } },
    };
    for (const auto &[reply, calls] : rows) {
        recorders.replies = { reply };
        try {
            recorder.startRecording(url);
            ADD_FAILURE() << "no error";
        } catch (const AudioRecorderError &error) {
            EXPECT_EQ(error.kind(), AudioRecorderError::Kind::CouldNotStartRecording);
            EXPECT_EQ(error.errorDescription(), "Could not start microphone recording.");
        }
        EXPECT_EQ(recorders.recorders.back()->calls, calls);
        EXPECT_EQ(recorder.currentLevel(), 0.0);
    }
}

TEST_F(AudioRecorderTest, PropagatesSystemErrorsUnchanged) {
    recorders.replies = { {}, { .failure = SystemError(QStringLiteral("no room")) } };
    recorder.startRecording(url);
    try {
        recorder.startRecording(url);
        ADD_FAILURE() << "no error";
    } catch (const SystemError &error) {
        EXPECT_EQ(error.errorDescription(), "no room");
    }
    EXPECT_EQ(callsOfRecorder(0).back(), "destroy");
}

TEST_F(AudioRecorderTest, TheLevelFollowsThePower) {
    EXPECT_EQ(recorder.currentLevel(), 0.0);
    recorders.replies = { { .averagePower = -25 } };
    recorder.startRecording(url);
    EXPECT_EQ(recorder.currentLevel(), 0.5);
    recorders.recorders[0]->reply.averagePower = -120;
    EXPECT_EQ(recorder.currentLevel(), 0.0);
    recorders.recorders[0]->reply.averagePower = 3;
    EXPECT_EQ(recorder.currentLevel(), 1.0);
}
