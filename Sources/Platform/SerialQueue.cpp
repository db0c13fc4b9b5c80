#include "Platform/SerialQueue.h"

#include <QThread>

#include <condition_variable>
#include <deque>
#include <future>
#include <mutex>

struct SerialQueue::State {
    QString label;
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> pending;
    bool isEnding = false;
    std::unique_ptr<QThread> thread;

    void run() {
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

SerialQueue::SerialQueue(QString label)
    : m_state(std::make_unique<State>()) {
    m_state->label = std::move(label);
}

SerialQueue::~SerialQueue() {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->isEnding = true;
    }
    m_state->changed.notify_all();
    if (m_state->thread)
        m_state->thread->wait();
}

void SerialQueue::async(std::function<void()> work) {
    {
        std::lock_guard lock(m_state->mutex);
        m_state->pending.push_back(std::move(work));
        if (!m_state->thread) {
            m_state->thread.reset(QThread::create([state = m_state.get()] { state->run(); }));
            m_state->thread->setObjectName(m_state->label);
            m_state->thread->start();
        }
    }
    m_state->changed.notify_one();
}

void SerialQueue::sync(const std::function<void()> &work) {
    std::packaged_task<void()> task(work);
    std::future<void> done = task.get_future();
    async([&task] { task(); });
    done.get();
}
