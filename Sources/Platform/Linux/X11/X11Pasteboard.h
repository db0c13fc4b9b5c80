#pragma once

#include "Platform/Pasteboard.h"

#include <memory>

/// The clipboard of an X server, over a connection and on a thread of its own, so that programs get what they
/// paste while this one is busy, and a program that hangs cannot hold this one up. Main thread only.
class X11Pasteboard final : public Pasteboard {
public:
    /// An empty name stands for the display of the environment. Without a display the clipboard stays empty.
    explicit X11Pasteboard(QByteArray displayName = {});
    ~X11Pasteboard() override;

    /// Takes at most 300 milliseconds.
    std::vector<PasteboardItem> items() override;
    void setDictatedText(const QString &text) override;
    void setItems(const std::vector<PasteboardItem> &items) override;
    /// Takes at most a second.
    void handOver() override;

private:
    class Worker;
    std::unique_ptr<Worker> m_worker;
};
