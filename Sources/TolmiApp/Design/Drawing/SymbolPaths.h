#pragma once

#include <QImage>
#include <QPainterPath>
#include <QStringList>

/// The symbols of the program, as drawing instructions on a grid of 24 by 24.
namespace SymbolPaths {

/// One step of drawing a symbol.
struct Step {
    enum class Kind {
        /// A line along the path.
        Line,
        /// The inside of the path.
        Fill,
        /// The inside and a line along its edge, so that a filled symbol is as large as its outline.
        Solid,
        /// Takes a line along the path away from what has been drawn.
        CutLine,
        /// Takes the inside of the path away from what has been drawn.
        CutFill,
    };

    Kind kind;
    QPainterPath path;
    /// Width of a line as a multiple of the symbol's stroke.
    double strokeFactor = 1;
};

/// Side of the grid on which every symbol is drawn.
inline constexpr double gridSize = 24;
/// Stroke on the grid that a text of regular weight asks for.
inline constexpr double regularStroke = 1.75;

/// Every name that can be asked for, sorted.
QStringList names();

/// Whether there is a symbol of this name.
bool contains(const QString &name);

/// The steps of a symbol at a size in logical pixels: very small ones have fewer details. None for an unknown
/// name.
QList<Step> steps(const QString &name, double size);

/// A white symbol of `size` logical pixels on nothing; `stroke` is on the grid.
QImage image(const QString &name, double size, double devicePixelRatio, double stroke = regularStroke);

/// A path in the notation of SVG: M, L, H, V, C, S, Q, A and Z, absolute or relative.
QPainterPath fromNotation(QLatin1String notation);

} // namespace SymbolPaths
