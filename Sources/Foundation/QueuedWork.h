#pragma once

#include "Foundation/Clock.h"
#include "Foundation/SerialQueue.h"

#include <future>

/// What `runOn` returns; awaiting it suspends a task of the main thread while the work runs on the queue.
template <typename Work>
struct QueuedWork {
    SerialQueue &queue;
    Clock &clock;
    Work work;

    using Value = std::invoke_result_t<Work &>;

    struct Awaiter : AbandonableAwaiter {
        SerialQueue &queue;
        Clock &clock;
        std::shared_ptr<std::packaged_task<Value()>> task;
        std::future<Value> result;

        void await_suspend(std::coroutine_handle<> waiting) {
            // Moved into the post, so that no copy of the resumption is destroyed on the queue's thread.
            queue.async([task = task, &clock = clock, resume = resumption(waiting)]() mutable {
                (*task)();
                clock.post(std::move(resume));
            });
        }
        Value await_resume() {
            AbandonableAwaiter::await_resume();
            return result.get();
        }
    };
    Awaiter operator co_await() const {
        auto task = std::make_shared<std::packaged_task<Value()>>(work);
        return { {}, queue, clock, task, task->get_future() };
    }
};

/// Runs `work` on `queue` and returns its result, or throws its exception, on the main thread.
///
/// Only for tasks of the main thread, which is not blocked. `work` is destroyed on the queue's thread, so it
/// must not own anything that belongs to the main thread. The clock must outlive the work.
template <typename Work>
QueuedWork<Work> runOn(SerialQueue &queue, Clock &clock, Work work) {
    return { queue, clock, std::move(work) };
}
