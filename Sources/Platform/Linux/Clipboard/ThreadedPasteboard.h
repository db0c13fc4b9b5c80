#pragma once

#include "Platform/Linux/Clipboard/ClipboardConnection.h"
#include "Platform/Pasteboard.h"

#include <memory>

/// A clipboard over a connection and on a thread of its own, so that programs get what they paste while this
/// one is busy, and a program that hangs cannot hold this one up. Main thread only.
class ThreadedPasteboard : public Pasteboard {
public:
    /// What a display server gives.
    struct Server {
        /// Opens a connection, on the thread; null without a server. A connection that breaks has a
        /// successor.
        std::function<std::unique_ptr<ClipboardConnection>(ClipboardConnection::Interruption)> open;
        /// Asked on the main thread.
        std::function<ClipboardConnection::ToolkitMark()> toolkitMark;
        /// What the log says when there is none; the clipboard stays empty then.
        QString missing;
    };

    explicit ThreadedPasteboard(Server server);
    ~ThreadedPasteboard() override;

    void readAhead() override;
    /// Takes at most 300 milliseconds.
    std::vector<PasteboardItem> items() override;
    /// Takes at most 300 milliseconds, a second try over a new connection included.
    bool setDictatedText(const QString &text) override;
    bool holdsDictatedText() override;
    void setItems(const std::vector<PasteboardItem> &items) override;
    /// When the target has not read a posted text yet, the items come 300 milliseconds after it has, at most
    /// 10 seconds later, unless something else is copied meanwhile.
    void restore(const std::vector<PasteboardItem> &items) override;
    /// Takes at most a second.
    void handOver() override;

private:
    class Worker;

    const std::function<ClipboardConnection::ToolkitMark()> m_toolkitMark;
    /// What a dictated text displaces.
    std::vector<PasteboardItem> m_lastItems;
    std::unique_ptr<Worker> m_worker;
};
