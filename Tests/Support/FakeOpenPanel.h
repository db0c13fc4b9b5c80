#pragma once

#include "Platform/OpenPanel.h"

#include <vector>

/// A panel that waits until the test answers.
class FakeOpenPanel final : public OpenPanel {
public:
    /// What was asked for, in order.
    std::vector<OpenPanelRequest> requests;

    void run(const OpenPanelRequest &request, Answer answer) override {
        requests.push_back(request);
        m_answer = std::move(answer);
    }

    /// Ends the panel that is open with the file, or without one.
    void choose(const std::optional<FileURL> &url) { std::exchange(m_answer, {})(url); }

private:
    Answer m_answer;
};
