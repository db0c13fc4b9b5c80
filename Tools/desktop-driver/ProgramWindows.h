#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

/// The standard output of a program.
QString outputOf(const QString &program, const QStringList &arguments);

/// The visible windows of the running Tolmi according to xdotool, distinguished by width.
namespace ProgramWindows {

/// Where a window is, by its number.
QRect geometryOf(const QString &window);

/// Null when there is none of that width.
QRect ofWidth(int least, int most);

/// The popup without the shadow around it; null while it is hidden.
QRect popup();

} // namespace ProgramWindows
