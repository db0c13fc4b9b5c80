#include "Foundation/SerialQueue.h"

#include "Foundation/ThreadName.h"
#include "Foundation/ThreadPriority.h"

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>
#include <thread>

struct SerialQueue::State {
    QString label;
    QualityOfService qualityOfService;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> pending;
    bool isEnding = false;
    std::thread thread;

    void run() {
        nameCurrentThread(label);
        if (qualityOfService == QualityOfService::Utility)
            lowerPriorityOfCurrentThread();
        std::unique_lock lock(mutex);
        for (;;) {
            changed.wait(lock, [this] { return isEnding || !pending.empty(); });
            if (pending.empty())
                return;
            auto work = std::move(pending.front());
            pending.pop_front();
            lock.unlock();
            work();
            work = nullptr;
            lock.lock();
        }
    }
};

SerialQueue::SerialQueue(QString label, QualityOfService qualityOfService)
    : m_state(std::make_unique<State>()) {
    m_state->label = std::move(label);
    m_state->qualityOfService = qualityOfService;
}

SerialQueue::~SerialQueue() {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->isEnding = true;
    }
    m_state->changed.notify_all();
    if (m_state->thread.joinable())
        m_state->thread.join();
}

void SerialQueue::async(std::function<void()> work) {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->pending.push_back(std::move(work));
        if (!m_state->thread.joinable())
            m_state->thread = std::thread([state = m_state.get()] { state->run(); });
    }
    m_state->changed.notify_one();
}

void SerialQueue::sync(const std::function<void()> &work) {
    std::packaged_task<void()> task(work);
    std::future<void> done = task.get_future();
    async([&task] { task(); });
    done.get();
}
