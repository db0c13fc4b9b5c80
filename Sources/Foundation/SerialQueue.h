#pragma once

#include <QString>

#include <functional>
#include <memory>

/// A named thread that runs queued work one piece at a time, in order.
///
/// The thread starts with the first piece. The destructor runs what is still queued, then joins; it must not
/// run on the queue's own thread.
class SerialQueue {
public:
    /// How urgent the work is.
    enum class QualityOfService {
        Default,
        /// Nobody waits for it; it leaves processor and disk to everything else.
        Utility,
    };

    /// `label` names the thread for debuggers and logs.
    explicit SerialQueue(QString label, QualityOfService qualityOfService = QualityOfService::Default);
    ~SerialQueue();

    /// Queues `work` and returns at once. Any thread.
    void async(std::function<void()> work);

    /// Queues `work`, waits until it has run, and rethrows its exception. Deadlocks if called on the queue's
    /// own thread.
    void sync(const std::function<void()> &work);

private:
    struct State;
    std::unique_ptr<State> m_state;
};
