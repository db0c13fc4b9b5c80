#pragma once

#include "Platform/SavePanel.h"

#include <deque>
#include <utility>
#include <vector>

/// A panel that stays open until the test answers for the user.
class FakeSavePanel final : public SavePanel {
public:
    void run(const SavePanelRequest &request, Answer answer) override {
        requests.push_back(request);
        m_waiting.push_back(std::move(answer));
    }

    /// Ends the panel that has been open for longest; false when none is.
    bool answer(const std::optional<FileURL> &url) {
        if (m_waiting.empty())
            return false;
        const Answer answer = std::move(m_waiting.front());
        m_waiting.pop_front();
        answer(url);
        return true;
    }

    /// Every panel that was opened.
    std::vector<SavePanelRequest> requests;

private:
    std::deque<Answer> m_waiting;
};
