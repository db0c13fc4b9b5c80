#include "Platform/Linux/Wayland/WaylandPasteboard.h"

#include "Platform/Linux/Wayland/WaylandActiveWindow.h"
#include "Platform/Linux/Wayland/WaylandClipboard.h"

#include <QClipboard>
#include <QGuiApplication>

namespace {
/// The toolkit's windows are those of the X server within the compositor, which asks them for what they own.
ClipboardConnection::ToolkitMark toolkitMark() {
    const auto *application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    return application && QGuiApplication::clipboard()->ownsClipboard() ? 1 : 0;
}

ThreadedPasteboard::Server server(std::shared_ptr<PasteProgress> progress, const QByteArray &socketName) {
    const auto needsPrimary = [socketName] {
        const auto front = WaylandActiveWindow::current(socketName);
        return front && front->pastesAtShiftInsert();
    };
    const auto open = [=](ClipboardConnection::Interruption interruption) {
        return std::unique_ptr<ClipboardConnection>(WaylandClipboard::open(
            WaylandConnection::open(socketName), progress, needsPrimary, std::move(interruption)));
    };
    return { open, &toolkitMark,
        QStringLiteral(
            "Tolmi: the Wayland compositor does not let programs without a window see the clipboard") };
}
} // namespace

WaylandPasteboard::WaylandPasteboard(std::shared_ptr<PasteProgress> progress, const QByteArray &socketName)
    : ThreadedPasteboard(server(std::move(progress), socketName)) { }
