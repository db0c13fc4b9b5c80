#pragma once

#include "Platform/Linux/Clipboard/ThreadedPasteboard.h"

#include <QByteArray>

class PasteProgress;

/// The clipboard of a Wayland compositor that lets programs without a window see it.
class WaylandPasteboard final : public ThreadedPasteboard {
public:
    /// `progress` is what the paste command's adapter has too. An empty name stands for the socket of the
    /// environment.
    explicit WaylandPasteboard(std::shared_ptr<PasteProgress> progress, const QByteArray &socketName = {});
};
