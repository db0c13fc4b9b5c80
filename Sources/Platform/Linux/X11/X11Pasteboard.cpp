#include "Platform/Linux/X11/X11Pasteboard.h"

#include "Platform/Linux/X11/X11Client.h"
#include "Platform/Linux/X11/X11Clipboard.h"

namespace {
ThreadedPasteboard::Server server(std::shared_ptr<PasteProgress> progress, const QByteArray &displayName) {
    using Interruption = ClipboardConnection::Interruption;
    const auto open = [=](Interruption interruption) -> std::unique_ptr<ClipboardConnection> {
        auto display = X11Display::open(displayName);
        if (!display)
            return {};
        return std::make_unique<X11Clipboard>(std::move(display), progress, std::move(interruption));
    };
    return { open, &X11Client::ofToolkit,
        QStringLiteral("Tolmi: there is no X display, so there is no clipboard") };
}
} // namespace

X11Pasteboard::X11Pasteboard(std::shared_ptr<PasteProgress> progress, const QByteArray &displayName)
    : ThreadedPasteboard(server(std::move(progress), displayName)) { }
