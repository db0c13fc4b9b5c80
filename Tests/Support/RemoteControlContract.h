#pragma once

#include "Platform/RemoteControl.h"
#include "Support/UntilTrue.h"

#include <QStringList>

#include <gtest/gtest.h>

/// A program that remembers what it is asked.
class ControlledProgram final : public RemoteCommands {
public:
    std::vector<RemoteRequest> requests;
    QStringList callersThatLeft;
    std::optional<RemoteRefusal> refusal;
    RemoteStatus now { QStringLiteral("idle"), 0.25, QString(), QStringLiteral("1.2") };
    std::vector<OperationMethod> rows;

    std::optional<RemoteRefusal> run(const RemoteRequest &request) override {
        requests.push_back(request);
        return refusal;
    }
    void callerLeft(const QString &caller) override { callersThatLeft.append(caller); }
    RemoteStatus status() const override { return now; }
    std::vector<OperationMethod> methods() const override { return rows; }
};

/// What every remote control does. `Made` builds one in its constructor and gives it as `control()`; another
/// program, which it plays, gives commands with `ask(command)`, which tells the refusal, and reads the states
/// that it was told of with `states()`.
template <typename Made>
class RemoteControlContract : public testing::Test {
protected:
    RemoteControl &control() { return m_made.control(); }
    std::optional<RemoteRefusal> ask(RemoteCommand command) { return m_made.ask(command); }
    QStringList states() { return m_made.states(); }

    ControlledProgram program;

private:
    Made m_made;
};

TYPED_TEST_SUITE_P(RemoteControlContract);

TYPED_TEST_P(RemoteControlContract, PassesEveryCommandOn) {
    ASSERT_TRUE(this->control().serve(this->program).isAvailable());
    const std::vector all { RemoteCommand::Press, RemoteCommand::Release, RemoteCommand::KeyDown,
        RemoteCommand::KeyUp, RemoteCommand::Start, RemoteCommand::Stop, RemoteCommand::Toggle,
        RemoteCommand::ShowStudio, RemoteCommand::ShowSettings, RemoteCommand::Quit };
    for (const RemoteCommand command : all)
        EXPECT_EQ(this->ask(command), std::nullopt);
    ASSERT_EQ(this->program.requests.size(), all.size());
    for (size_t index = 0; index < all.size(); ++index) {
        EXPECT_EQ(this->program.requests[index].command, all[index]);
        EXPECT_EQ(this->program.requests[index].caller, this->program.requests.front().caller);
    }
}

TYPED_TEST_P(RemoteControlContract, TellsWhyACommandIsRefused) {
    ASSERT_TRUE(this->control().serve(this->program).isAvailable());
    for (const auto reason : { RemoteRefusal::Locked, RemoteRefusal::Busy, RemoteRefusal::HeldElsewhere }) {
        this->program.refusal = reason;
        EXPECT_EQ(this->ask(RemoteCommand::Start), reason);
    }
}

TYPED_TEST_P(RemoteControlContract, TellsOfEachState) {
    ASSERT_TRUE(this->control().serve(this->program).isAvailable());
    for (const char *state : { "recording", "transcribing", "idle" }) {
        this->program.now.state = QString::fromLatin1(state);
        this->control().announce();
    }
    const QStringList expected { QStringLiteral("recording"), QStringLiteral("transcribing"),
        QStringLiteral("idle") };
    EXPECT_TRUE(untilTrue([&] { return this->states().size() >= expected.size(); }));
    EXPECT_EQ(this->states(), expected);
}

REGISTER_TYPED_TEST_SUITE_P(
    RemoteControlContract, PassesEveryCommandOn, TellsWhyACommandIsRefused, TellsOfEachState);
