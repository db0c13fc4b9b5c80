#pragma once

#include <QRect>
#include <QString>
#include <QStringList>

/// What a program printed.
QString outputOf(const QString &program, const QStringList &arguments);

/// The visible windows of the running Tolmi, told apart by their width, as xdotool sees them.
namespace ProgramWindows {

/// Where a window is, by its number.
QRect geometryOf(const QString &window);

/// Null when there is none of that width.
QRect ofWidth(int least, int most);

/// The popup without the shadow around it; null while it is hidden.
QRect popup();

} // namespace ProgramWindows
