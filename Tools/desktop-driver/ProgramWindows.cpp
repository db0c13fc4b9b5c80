#include "desktop-driver/ProgramWindows.h"

#include <QProcess>
#include <QRegularExpression>

namespace {

constexpr int popupWidth = 320;
constexpr int shadow = 40;

} // namespace

QString outputOf(const QString &program, const QStringList &arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput());
}

namespace ProgramWindows {

QRect geometryOf(const QString &window) {
    const QString told = outputOf(QStringLiteral("xdotool"), { "getwindowgeometry", "--shell", window });
    const auto value = [&told](const QString &name) {
        return QRegularExpression(name + "=(-?\\d+)").match(told).captured(1).toInt();
    };
    return { value("X"), value("Y"), value("WIDTH"), value("HEIGHT") };
}

QRect ofWidth(int least, int most) {
    const QString found
        = outputOf(QStringLiteral("xdotool"), { "search", "--onlyvisible", "--class", "^tolmi$" });
    for (const QString &window : found.split('\n', Qt::SkipEmptyParts)) {
        const QRect geometry = geometryOf(window);
        if (geometry.width() >= least && geometry.width() <= most)
            return geometry;
    }
    return {};
}

QRect popup() {
    const QRect window = ofWidth(popupWidth + 2 * shadow, popupWidth + 2 * shadow);
    return window.isNull() ? QRect() : window.adjusted(shadow, shadow, -shadow, -shadow);
}

} // namespace ProgramWindows
