#pragma once

#include "Platform/Linux/Clipboard/ThreadedPasteboard.h"

#include <QByteArray>

class PasteProgress;

/// The clipboard of an X server. Only what the front window's connection reads counts as read by the target:
/// clipboard managers read at once.
class X11Pasteboard final : public ThreadedPasteboard {
public:
    /// `progress` is what the paste command's adapter has too. An empty name stands for the display of the
    /// environment.
    explicit X11Pasteboard(std::shared_ptr<PasteProgress> progress, const QByteArray &displayName = {});
};
