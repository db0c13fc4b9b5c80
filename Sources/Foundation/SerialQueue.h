#pragma once

#include <QString>

#include <functional>
#include <memory>

/// A named thread that runs the work it is given, one piece after the other, in the order it came.
///
/// The thread starts with the first piece. Destruction runs what is still queued, then joins; it must not
/// happen on the queue's own thread.
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

    /// Queues `work` and waits until it has run; an exception of `work` reaches the caller. Not from the
    /// queue's own thread, where it would wait for itself.
    void sync(const std::function<void()> &work);

private:
    struct State;
    std::unique_ptr<State> m_state;
};
