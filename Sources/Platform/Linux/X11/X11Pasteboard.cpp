#include "Platform/Linux/X11/X11Pasteboard.h"

#include "Foundation/Log.h"
#include "Platform/Linux/Files/EventDescriptor.h"
#include "Platform/Linux/X11/X11ClipboardOwner.h"
#include "Platform/Linux/X11/X11ClipboardReader.h"

#include <QThread>

#include <X11/Xatom.h>

#include <deque>
#include <future>
#include <mutex>

namespace {
using std::chrono::milliseconds;
using Instant = X11Display::Instant;

/// What an operation may take in all, and what of it is kept back for the way to the thread and back.
constexpr milliseconds operationTime { 300 };
constexpr milliseconds handOverTime { 1000 };
constexpr milliseconds wayTime { 15 };

Instant fromNow(milliseconds time) {
    return std::chrono::steady_clock::now() + time;
}

/// The clipboard as the thread sees it.
class Clipboard {
public:
    explicit Clipboard(std::unique_ptr<X11Display> display)
        : m_display(std::move(display))
        , m_window(makeWindow(*m_display))
        , m_owner(*m_display, m_window, m_encodings)
        , m_reader(*m_display, m_window, m_encodings,
              [this](const std::function<bool()> &isDone, Instant until) { handleEvents(isDone, until); }) { }

    X11Display &display() { return *m_display; }

    std::vector<PasteboardItem> items(Instant until) {
        handleArrivedEvents();
        return m_owner.owns() ? m_owner.content().items() : m_reader.items(until);
    }

    void take(ClipboardContent content) { m_owner.take(std::move(content)); }

    void handOver(Instant until) {
        handleArrivedEvents();
        const Atom manager = m_display->atom("CLIPBOARD_MANAGER");
        if (!m_owner.owns() || XGetSelectionOwner(m_display->get(), manager) == None)
            return;
        m_reader.convert(manager, m_display->atom("SAVE_TARGETS"), until,
            X11Property { XA_ATOM, 32, packedProperty(m_owner.targets()) });
    }

    void handleArrivedEvents() {
        while (const auto event = m_display->takeEvent()) {
            m_owner.handle(*event);
            m_reader.handle(*event);
        }
    }

private:
    static Window makeWindow(X11Display &display) {
        const Window window = XCreateSimpleWindow(display.get(), display.root(), -1, -1, 1, 1, 0, 0, 0);
        XSelectInput(display.get(), window, PropertyChangeMask);
        return window;
    }

    void handleEvents(const std::function<bool()> &isDone, Instant until) {
        for (;;) {
            handleArrivedEvents();
            if (isDone() || m_display->isBroken() || std::chrono::steady_clock::now() >= until)
                return;
            m_display->wait(-1, until);
        }
    }

    std::unique_ptr<X11Display> m_display;
    Window m_window;
    X11ClipboardEncodings m_encodings;
    X11ClipboardOwner m_owner;
    X11ClipboardReader m_reader;
};
} // namespace

/// The thread and the way to it.
class X11Pasteboard::Worker {
public:
    explicit Worker(QByteArray displayName)
        : m_thread(QThread::create([this, displayName] { run(displayName); })) {
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
    /// still run, so it owns all that it needs.
    template <typename Operation>
    auto perform(Instant until, Operation operation) {
        using Value = std::invoke_result_t<Operation, Clipboard &>;
        auto task = std::make_shared<std::packaged_task<Value(Clipboard &)>>(std::move(operation));
        std::future<Value> result = task->get_future();
        {
            std::lock_guard lock(m_mutex);
            if (!m_isEnding)
                m_operations.emplace_back([task](Clipboard &clipboard) { (*task)(clipboard); });
        }
        // An operation that nobody will run is dropped, and that shows in the result.
        task.reset();
        m_wakeUp.signal();
        if (result.wait_until(until) != std::future_status::ready)
            return Value();
        try {
            return result.get();
        } catch (const std::future_error &) {
            return Value();
        }
    }

private:
    using Operation = std::function<void(Clipboard &)>;

    void run(const QByteArray &displayName) {
        if (auto display = X11Display::open(displayName))
            serve(std::move(display));
        else
            logLine(QStringLiteral("Tolmi: there is no X display, so there is no clipboard"));
        std::lock_guard lock(m_mutex);
        m_isEnding = true;
        m_operations.clear();
    }

    void serve(std::unique_ptr<X11Display> display) {
        Clipboard clipboard(std::move(display));
        while (!clipboard.display().isBroken()) {
            clipboard.handleArrivedEvents();
            m_wakeUp.clear();
            while (const Operation operation = takeOperation())
                operation(clipboard);
            if (isEnding())
                return;
            clipboard.display().wait(m_wakeUp.get(), {});
        }
    }

    Operation takeOperation() {
        std::lock_guard lock(m_mutex);
        if (m_operations.empty())
            return {};
        Operation operation = std::move(m_operations.front());
        m_operations.pop_front();
        return operation;
    }

    bool isEnding() {
        std::lock_guard lock(m_mutex);
        return m_isEnding;
    }

    EventDescriptor m_wakeUp;
    std::mutex m_mutex;
    std::deque<Operation> m_operations;
    bool m_isEnding = false;
    std::unique_ptr<QThread> m_thread;
};

X11Pasteboard::X11Pasteboard(QByteArray displayName)
    : m_worker(std::make_unique<Worker>(std::move(displayName))) { }

X11Pasteboard::~X11Pasteboard() = default;

std::vector<PasteboardItem> X11Pasteboard::items() {
    const Instant until = fromNow(operationTime);
    return m_worker->perform(
        until, [until](Clipboard &clipboard) { return clipboard.items(until - wayTime); });
}

void X11Pasteboard::setDictatedText(const QString &text) {
    m_worker->perform(fromNow(operationTime), [text](Clipboard &clipboard) {
        clipboard.take(ClipboardContent::dictated(text));
        return true;
    });
}

void X11Pasteboard::setItems(const std::vector<PasteboardItem> &items) {
    m_worker->perform(fromNow(operationTime), [items](Clipboard &clipboard) {
        clipboard.take(ClipboardContent(items));
        return true;
    });
}

void X11Pasteboard::handOver() {
    const Instant until = fromNow(handOverTime);
    m_worker->perform(until, [until](Clipboard &clipboard) {
        clipboard.handOver(until - wayTime);
        return true;
    });
}
