#pragma once

#include "Foundation/Task.h"

#include <gtest/gtest.h>

#include <deque>
#include <optional>
#include <stdexcept>
#include <utility>

/// The answers that a test prepares for an operation that may suspend. A call without a prepared answer fails
/// the test and throws.
template <typename T>
class ScriptedOperation {
public:
    /// The next call that has no answer yet returns `value` at once.
    void give(T value) { m_replies.push_back({ std::move(value), nullptr }); }

    /// The next call that has no answer yet throws `error`.
    template <typename Error>
    void fail(Error error) {
        m_replies.push_back({ std::nullopt, std::make_exception_ptr(std::move(error)) });
    }

    /// The next call that has no answer yet suspends until `answer` or `answerFailure`.
    void suspend() { m_replies.push_back({}); }

    /// How many calls are suspended.
    size_t waitingCount() const { return m_waiting.size(); }

    /// Ends the oldest suspended call with `value`.
    void answer(T value) { resume({ std::move(value), nullptr }); }

    /// Ends the oldest suspended call with `error`.
    template <typename Error>
    void answerFailure(Error error) {
        resume({ std::nullopt, std::make_exception_ptr(std::move(error)) });
    }

    /// Abandons the suspended calls, as the end of the real thing does.
    void abandonWaiting() { const auto dropped = std::exchange(m_waiting, {}); }

    /// The fake's side: one call.
    Task<T> call() {
        if (m_replies.empty()) {
            ADD_FAILURE() << "a call without a prepared answer";
            throw std::logic_error("no answer");
        }
        Reply reply = std::move(m_replies.front());
        m_replies.pop_front();
        if (!reply.value && !reply.error)
            co_await Wait { m_waiting, reply };
        if (reply.error)
            std::rethrow_exception(reply.error);
        co_return *reply.value;
    }

private:
    /// Without value and error: not known yet.
    struct Reply {
        std::optional<T> value;
        std::exception_ptr error;
    };
    struct WaitingCall {
        Reply &reply;
        Resumption resume;
    };

    struct Wait {
        std::deque<WaitingCall> &waiting;
        Reply &reply;

        class Awaiter : public AbandonableAwaiter {
        public:
            explicit Awaiter(const Wait &wait)
                : m_wait(wait) { }
            void await_suspend(std::coroutine_handle<> handle) {
                m_wait.waiting.push_back({ m_wait.reply, resumption(handle) });
            }

        private:
            Wait m_wait;
        };
        Awaiter operator co_await() const { return Awaiter(*this); }
    };

    void resume(Reply reply) {
        ASSERT_FALSE(m_waiting.empty()) << "no call is suspended";
        const WaitingCall call = m_waiting.front();
        m_waiting.pop_front();
        call.reply = std::move(reply);
        call.resume();
    }

    std::deque<Reply> m_replies;
    std::deque<WaitingCall> m_waiting;
};
