#include "Platform/Linux/X11/X11Pasteboard.h"

#include "Foundation/Log.h"
#include "Platform/Linux/Files/EventDescriptor.h"
#include "Platform/Linux/X11/ToolkitClipboard.h"
#include "Platform/Linux/X11/X11Client.h"
#include "Platform/Linux/X11/X11Clipboard.h"

#include <QThread>

#include <poll.h>

#include <deque>
#include <future>
#include <mutex>

namespace {
using std::chrono::milliseconds;
using Instant = X11Display::Instant;

/// What an operation may take in all, and what of it is kept back for the way to the thread and back: on a
/// busy machine that takes a few turns of the scheduler, and what comes later than this is lost.
constexpr milliseconds operationTime { 300 };
constexpr milliseconds attemptTime { 150 };
constexpr milliseconds handOverTime { 1000 };
constexpr milliseconds wayTime { 40 };
/// How long a content may take that is read ahead.
constexpr std::chrono::seconds readAheadTime { 10 };

Instant fromNow(milliseconds time) {
    return std::chrono::steady_clock::now() + time;
}
} // namespace

/// The thread and the way to it.
class X11Pasteboard::Worker {
public:
    Worker(QByteArray displayName, std::shared_ptr<X11PasteProgress> progress)
        : m_progress(std::move(progress))
        , m_thread(QThread::create([this, displayName] { run(displayName); })) {
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
        using Value = std::invoke_result_t<Operation, X11Clipboard &>;
        auto task = std::make_shared<std::packaged_task<Value(X11Clipboard &)>>(std::move(operation));
        std::future<Value> result = task->get_future();
        post({ [task](X11Clipboard &clipboard) { (*task)(clipboard); }, readingEnds });
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
        std::function<void(X11Clipboard &)> run;
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
    void run(const QByteArray &displayName) {
        while (!isEnding()) {
            if (auto display = X11Display::open(displayName))
                serve(std::move(display));
            else
                goWithout();
            waitForOperation();
        }
        dropOperations();
    }

    void serve(std::unique_ptr<X11Display> display) {
        X11Clipboard clipboard(
            std::move(display), m_progress, { m_wakeUp.get(), [this] { return readingEnds(); } });
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
            logLine(QStringLiteral("Tolmi: there is no X display, so there is no clipboard"));
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

    const std::shared_ptr<X11PasteProgress> m_progress;
    EventDescriptor m_wakeUp;
    std::mutex m_mutex;
    std::deque<Operation> m_operations;
    bool m_isEnding = false;
    bool m_hasLogged = false;
    std::unique_ptr<QThread> m_thread;
};

X11Pasteboard::X11Pasteboard(std::shared_ptr<X11PasteProgress> progress, QByteArray displayName)
    : m_worker(std::make_unique<Worker>(std::move(displayName), std::move(progress))) { }

X11Pasteboard::~X11Pasteboard() = default;

void X11Pasteboard::readAhead() {
    const auto read = [until = fromNow(readAheadTime), toolkit = X11Client::ofToolkit()](
                          X11Clipboard &clipboard) { clipboard.readAhead(until, toolkit); };
    m_worker->post({ read });
}

std::vector<PasteboardItem> X11Pasteboard::items() {
    const Instant until = fromNow(operationTime);
    const auto read = [until, toolkit = X11Client::ofToolkit()](
                          X11Clipboard &clipboard) { return clipboard.items(until - wayTime, toolkit); };
    const X11Clipboard::Found found = m_worker->perform(until, read, until - 2 * wayTime);
    m_lastItems = found.isToolkits ? ToolkitClipboard::items() : found.items;
    return m_lastItems;
}

bool X11Pasteboard::setDictatedText(const QString &text) {
    const auto take = [text, displaced = m_lastItems](
                          X11Clipboard &clipboard) { return clipboard.takeDictated(text, displaced); };
    if (m_worker->perform(fromNow(attemptTime), take))
        return true;
    // A connection that broke a moment ago, or one that does not work any more, has a successor.
    m_worker->post({ [](X11Clipboard &clipboard) { clipboard.retire(); } });
    return m_worker->perform(fromNow(attemptTime), take);
}

bool X11Pasteboard::holdsDictatedText() {
    return m_worker->perform(
        fromNow(attemptTime), [](X11Clipboard &clipboard) { return clipboard.holdsDictatedText(); });
}

void X11Pasteboard::setItems(const std::vector<PasteboardItem> &items) {
    m_worker->perform(fromNow(operationTime),
        [items](X11Clipboard &clipboard) { return clipboard.take(ClipboardContent(items)); });
}

void X11Pasteboard::restore(const std::vector<PasteboardItem> &items) {
    m_lastItems.clear();
    m_worker->perform(fromNow(operationTime), [items](X11Clipboard &clipboard) {
        clipboard.restore(items);
        return true;
    });
}

void X11Pasteboard::handOver() {
    const Instant until = fromNow(handOverTime);
    const bool isToolkits = m_worker->perform(
        fromNow(attemptTime), [toolkit = X11Client::ofToolkit()](X11Clipboard &clipboard) {
            return clipboard.isToolkits(toolkit);
        });
    if (isToolkits)
        setItems(ToolkitClipboard::items());
    m_worker->perform(until, [until](X11Clipboard &clipboard) {
        clipboard.handOver(until - wayTime);
        return true;
    });
}
