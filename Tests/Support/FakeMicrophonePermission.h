#pragma once

#include "Platform/MicrophonePermission.h"

#include <utility>
#include <vector>

/// A microphone right that the test grants or refuses. Main thread only.
class FakeMicrophonePermission final : public MicrophonePermission {
public:
    AuthorizationStatus present = AuthorizationStatus::Authorized;
    int statusCount = 0;
    /// The questions that wait for the user's answer, in order; the test answers by calling them.
    std::vector<std::function<void(bool)>> questions;

    AuthorizationStatus status() override {
        ++statusCount;
        return present;
    }
    void requestAccess(std::function<void(bool)> answer) override { questions.push_back(std::move(answer)); }

    /// Lets the user answer every waiting question.
    void answerAll(bool isGranted) {
        present = isGranted ? AuthorizationStatus::Authorized : AuthorizationStatus::Denied;
        const auto waiting = std::exchange(questions, {});
        for (const auto &answer : waiting)
            answer(isGranted);
    }
};
