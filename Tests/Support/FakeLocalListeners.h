#pragma once

#include "Platform/LocalListeners.h"

#include <QUrl>

#include <gtest/gtest.h>

#include <deque>
#include <vector>

/// A machine on which those listen whom the test names.
class FakeLocalListeners final : public LocalListeners {
public:
    Listener listenerAt(const QUrl &url) const override {
        asked.push_back(url);
        if (replies.empty()) {
            ADD_FAILURE() << "a listener is asked for without a reply in the queue";
            return Listener::Untrusted;
        }
        const Listener reply = replies.front();
        replies.pop_front();
        return reply;
    }

    /// What was asked, in order.
    mutable std::vector<QUrl> asked;
    /// What the next questions get.
    mutable std::deque<Listener> replies;
};
