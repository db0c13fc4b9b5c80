#include "Platform/Linux/Clipboard/ThreadedPasteboard.h"

#include "Foundation/Log.h"
#include "Platform/Linux/Clipboard/ToolkitClipboard.h"
#include "Platform/Linux/Files/EventDescriptor.h"

#include <QThread>

#include <poll.h>
#include <pthread.h>
#include <signal.h>

#include <deque>
#include <future>
#include <mutex>

namespace {
using std::chrono::milliseconds;
using Instant = ClipboardConnection::Instant;

/// What an operation may take in all, and what of it is kept back for the way to the thread and back: on a
/// busy machine that takes a few turns of the scheduler, and what comes later than this is lost.
constexpr milliseconds operationTime { 300 };
constexpr milliseconds attemptTime { 150 };
constexpr milliseconds handOverTime { 1000 };
constexpr milliseconds wayTime { 40 };
/// How long a content may take that is read ahead.
constexpr std::chrono::seconds readAheadTime { 10 };

/// A program that stops reading what it asked for must not end this one.
void blockBrokenPipes() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
}

Instant fromNow(milliseconds time) {
    return std::chrono::steady_clock::now() + time;
}
} // namespace

/// The thread and the way to it.
class ThreadedPasteboard::Worker {
public:
    explicit Worker(Server server)
        : m_server(std::move(server))
        , m_thread(QThread::create([this] { run(); })) {
        m_thread->setObjectName(QStringLiteral("Tolmi.Pasteboard"));
        m_thread->start();
    }
    ~Worker() {
        {
            std::lock_guard lock(m_mutex);
            m_isEnding = true;
        }
        m_wakeUp.signal();
        m_thread->wait();
    }

    /// What `operation` gives, or an empty value when it has not done so by then. The operation may then
    /// still run, so it owns all that it needs. Reading that is under way ends first, by `readingEnds`.
    template <typename Operation>
    auto perform(Instant until, Operation operation, Instant readingEnds = Instant::min()) {
        using Value = std::invoke_result_t<Operation, ClipboardConnection &>;
        auto task = std::make_shared<std::packaged_task<Value(ClipboardConnection &)>>(std::move(operation));
        std::future<Value> result = task->get_future();
        post({ [task](ClipboardConnection &clipboard) { (*task)(clipboard); }, readingEnds });
        // An operation that nobody will run is dropped, and that shows in the result.
        task.reset();
        if (result.wait_until(until) != std::future_status::ready)
            return Value();
        try {
            return result.get();
        } catch (const std::future_error &) {
            return Value();
        }
    }

    struct Operation {
        std::function<void(ClipboardConnection &)> run;
        Instant readingEnds = Instant::min();
    };

    /// Waits for nothing.
    void post(Operation operation) {
        {
            std::lock_guard lock(m_mutex);
            if (!m_isEnding)
                m_operations.push_back(std::move(operation));
        }
        m_wakeUp.signal();
    }

private:
    void run() {
        blockBrokenPipes();
        while (!isEnding()) {
            if (const auto clipboard = m_server.open({ m_wakeUp.get(), [this] { return readingEnds(); } }))
                serve(*clipboard);
            else
                goWithout();
            waitForOperation();
        }
        dropOperations();
    }

    void serve(ClipboardConnection &clipboard) {
        while (!clipboard.isOver() && !isEnding()) {
            m_wakeUp.clear();
            while (!clipboard.isOver()) {
                const Operation operation = takeOperation();
                if (!operation.run)
                    break;
                operation.run(clipboard);
            }
            if (!isEnding() && !clipboard.isOver())
                clipboard.handleEvents();
        }
    }

    /// Nobody shall wait for what cannot be done. The next operation is a reason to look again.
    void goWithout() {
        if (!std::exchange(m_hasLogged, true))
            logLine(m_server.missing);
        dropOperations();
    }

    void waitForOperation() {
        while (!isEnding() && !hasOperation()) {
            pollfd descriptor { m_wakeUp.get(), POLLIN, 0 };
            poll(&descriptor, 1, -1);
            m_wakeUp.clear();
        }
    }

    /// By when reading must end for the sake of the operations that wait.
    Instant readingEnds() {
        m_wakeUp.clear();
        std::lock_guard lock(m_mutex);
        if (m_isEnding)
            return Instant::min();
        return m_operations.empty() ? Instant::max() : m_operations.front().readingEnds;
    }

    Operation takeOperation() {
        std::lock_guard lock(m_mutex);
        if (m_operations.empty())
            return {};
        Operation operation = std::move(m_operations.front());
        m_operations.pop_front();
        return operation;
    }

    void dropOperations() {
        std::lock_guard lock(m_mutex);
        m_operations.clear();
    }

    bool hasOperation() {
        std::lock_guard lock(m_mutex);
        return !m_operations.empty();
    }

    bool isEnding() {
        std::lock_guard lock(m_mutex);
        return m_isEnding;
    }

    const Server m_server;
    EventDescriptor m_wakeUp;
    std::mutex m_mutex;
    std::deque<Operation> m_operations;
    bool m_isEnding = false;
    bool m_hasLogged = false;
    std::unique_ptr<QThread> m_thread;
};

ThreadedPasteboard::ThreadedPasteboard(Server server)
    : m_toolkitMark(server.toolkitMark)
    , m_worker(std::make_unique<Worker>(std::move(server))) { }

ThreadedPasteboard::~ThreadedPasteboard() = default;

void ThreadedPasteboard::readAhead() {
    const auto read = [until = fromNow(readAheadTime), toolkit = m_toolkitMark()](
                          ClipboardConnection &clipboard) { clipboard.readAhead(until, toolkit); };
    m_worker->post({ read });
}

std::vector<PasteboardItem> ThreadedPasteboard::items() {
    const Instant until = fromNow(operationTime);
    const auto read = [until, toolkit = m_toolkitMark()](ClipboardConnection &clipboard) {
        return clipboard.items(until - wayTime, toolkit);
    };
    const ClipboardConnection::Found found = m_worker->perform(until, read, until - 2 * wayTime);
    m_lastItems = found.isToolkits ? ToolkitClipboard::items() : found.items;
    return m_lastItems;
}

bool ThreadedPasteboard::setDictatedText(const QString &text) {
    const auto take = [text, displaced = m_lastItems](
                          ClipboardConnection &clipboard) { return clipboard.takeDictated(text, displaced); };
    if (m_worker->perform(fromNow(attemptTime), take))
        return true;
    // A connection that broke a moment ago, or one that does not work any more, has a successor.
    m_worker->post({ [](ClipboardConnection &clipboard) { clipboard.retire(); } });
    return m_worker->perform(fromNow(attemptTime), take);
}

bool ThreadedPasteboard::holdsDictatedText() {
    return m_worker->perform(
        fromNow(attemptTime), [](ClipboardConnection &clipboard) { return clipboard.holdsDictatedText(); });
}

void ThreadedPasteboard::setItems(const std::vector<PasteboardItem> &items) {
    m_worker->perform(fromNow(operationTime),
        [items](ClipboardConnection &clipboard) { return clipboard.take(ClipboardContent(items)); });
}

void ThreadedPasteboard::restore(const std::vector<PasteboardItem> &items) {
    m_lastItems.clear();
    m_worker->perform(fromNow(operationTime), [items](ClipboardConnection &clipboard) {
        clipboard.restore(items);
        return true;
    });
}

void ThreadedPasteboard::handOver() {
    const Instant until = fromNow(handOverTime);
    const bool isToolkits = m_worker->perform(
        fromNow(attemptTime), [toolkit = m_toolkitMark()](ClipboardConnection &clipboard) {
            return clipboard.isToolkits(toolkit);
        });
    if (isToolkits)
        setItems(ToolkitClipboard::items());
    m_worker->perform(until, [until](ClipboardConnection &clipboard) {
        clipboard.handOver(until - wayTime);
        return true;
    });
}
