#include "Foundation/Log.h"
#include "Main/Composition.h"
#include "Main/UnixSignals.h"
#include "Main/WindowSystem.h"
#include "TolmiApp/Shell/Views.h"

#include <QApplication>
#include <QIcon>
#include <QImageReader>
#include <QPixmap>

#include <sys/stat.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {
/// The program's icon. Read by the toolkit's own reader of PNG: left to find the format out, it would load
/// the library of every other one.
QIcon programIcon() {
    QImageReader reader(QStringLiteral(":/AppIcon.png"), "png");
    reader.setAutoDetectImageFormat(false);
    return QIcon(QPixmap::fromImageReader(&reader));
}
} // namespace

int main(int argc, char **argv) {
    // Whoever reads the log may go before the program does. A child gets the usual answer back.
    std::signal(SIGPIPE, SIG_IGN);
    const char *programArgument = argc > 0 ? argv[0] : "";
    // Whatever this program and whisper-cli write is the user's alone; what is exported follows the user's
    // mask.
    const mode_t usersMask = umask(0077);
    if (!WindowSystem::prepareToolkit()) {
        logLine(QStringLiteral("Tolmi: neither a Wayland compositor nor an X server answers. Start it from a "
                               "terminal of your desktop session."));
        return EXIT_FAILURE;
    }
    // The first window would wait for the disk otherwise, and the few shaders are compiled soon.
    QApplication::setAttribute(Qt::AA_DisableShaderDiskCache);
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tolmi"));
    QApplication::setDesktopFileName(QStringLiteral("tolmi"));
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setWindowIcon(programIcon());
    Views::prepareApplication();

    auto *composition = new Composition({ programArgument, usersMask, &QApplication::quit });
    if (!composition->start()) {
        logLine(QStringLiteral("Tolmi: it runs already and has been asked to show itself."));
        return 0;
    }
    const UnixSignals signalHandlers(&QApplication::quit);
    const int status = QApplication::exec();
    composition->settle();
    std::fflush(nullptr);
    std::_Exit(status);
}
