#include "Main/Composition.h"
#include "Main/UnixSignals.h"
#include "Platform/Log.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace {
// The global key and the paste reach X11 windows, and a window of this program must lie among them to be
// placed right.
void preferX11() {
    if (!qEnvironmentVariableIsSet("WAYLAND_DISPLAY") || qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        return;
    qputenv("QT_QPA_PLATFORM", "xcb");
    logLine(QStringLiteral(
        "Tolmi: on Wayland the key and the paste reach only windows that run through XWayland."));
}
} // namespace

int main(int argc, char **argv) {
    const char *programArgument = argc > 0 ? argv[0] : "";
    preferX11();
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolmi"));
    QApplication::setDesktopFileName(QStringLiteral("tolmi"));
    QApplication::setQuitOnLastWindowClosed(false);

    auto *composition = new Composition(programArgument, &QApplication::quit);
    if (!composition->start()) {
        logLine(QStringLiteral("Tolmi: it runs already; look for its sign in the panel."));
        return 0;
    }
    const UnixSignals signalHandlers(&QApplication::quit);
    const int status = QApplication::exec();
    composition->settle();
    std::fflush(nullptr);
    std::_Exit(status);
}
