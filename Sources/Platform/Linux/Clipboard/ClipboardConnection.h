#pragma once

#include "Platform/Linux/Clipboard/ClipboardContent.h"

#include <chrono>
#include <functional>
#include <vector>

/// The clipboard over one connection to a display server, and the primary selection as far as pasting needs
/// it. One thread uses it.
class ClipboardConnection {
public:
    using Instant = std::chrono::steady_clock::time_point;
    /// What may cut the reading short: the instant by which it must end, asked each time the descriptor has
    /// woken the thread.
    struct Interruption {
        int wakeDescriptor;
        std::function<Instant()> readingEnds;
    };
    /// What tells the content of this program's own windows, which cannot answer while the main thread asks,
    /// from that of others; 0 when they cannot have any.
    using ToolkitMark = unsigned long;
    /// What items() finds.
    struct Found {
        /// Whether it must be read from the toolkit, which cannot answer.
        bool isToolkits = false;
        std::vector<PasteboardItem> items;
    };

    virtual ~ClipboardConnection() = default;

    /// Whether another one must take its place.
    virtual bool isOver() const = 0;
    /// Has another one take its place.
    virtual void retire() = 0;

    /// Handles what has arrived and is due, and waits for more, or for the descriptor.
    virtual void handleEvents() = 0;

    /// What could be read by then. What was read before is not read again while its owner is the same.
    virtual Found items(Instant until, ToolkitMark toolkit) = 0;
    /// Reads ahead what items() will ask for.
    virtual void readAhead(Instant until, ToolkitMark toolkit) = 0;
    virtual bool isToolkits(ToolkitMark toolkit) = 0;

    virtual bool take(ClipboardContent content) = 0;
    /// `displaced` is what was there before.
    virtual bool takeDictated(const QString &text, const std::vector<PasteboardItem> &displaced) = 0;
    virtual bool holdsDictatedText() = 0;
    /// See PasteRestore.
    virtual void restore(const std::vector<PasteboardItem> &items) = 0;
    virtual void handOver(Instant until) = 0;
};
