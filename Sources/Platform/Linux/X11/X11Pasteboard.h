#pragma once

#include "Platform/Pasteboard.h"

#include <memory>

class X11PasteProgress;

/// The clipboard of an X server, over a connection and on a thread of its own, so that programs get what they
/// paste while this one is busy, and a program that hangs cannot hold this one up. Main thread only.
class X11Pasteboard final : public Pasteboard {
public:
    /// `progress` is what the paste command's adapter has too. An empty name stands for the display of the
    /// environment. Without a display the clipboard stays empty; a connection that breaks has a successor.
    explicit X11Pasteboard(std::shared_ptr<X11PasteProgress> progress, QByteArray displayName = {});
    ~X11Pasteboard() override;

    void readAhead() override;
    /// Takes at most 300 milliseconds.
    std::vector<PasteboardItem> items() override;
    /// Takes at most 300 milliseconds, a second try over a new connection included.
    bool setDictatedText(const QString &text) override;
    bool holdsDictatedText() override;
    void setItems(const std::vector<PasteboardItem> &items) override;
    /// When the front window has not read a posted text yet, the items come 300 milliseconds after it has, at
    /// most 10 seconds later, unless something else is copied meanwhile. Only that application's reading
    /// counts: clipboard managers read at once.
    void restore(const std::vector<PasteboardItem> &items) override;
    /// Takes at most a second.
    void handOver() override;

private:
    class Worker;

    /// What a dictated text displaces.
    std::vector<PasteboardItem> m_lastItems;
    std::unique_ptr<Worker> m_worker;
};
