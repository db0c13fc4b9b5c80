#pragma once

#include <QImage>
#include <QPainterPath>
#include <QStringList>

/// The symbols of the program, as drawing instructions on a grid of 24 by 24.
namespace SymbolPaths {

/// One step of drawing a symbol.
struct Step {
    enum class Kind {
        /// Strokes the path.
        Line,
        /// Fills the path.
        Fill,
        /// Fills and strokes the path, so that a filled symbol is as large as its outline variant.
        Solid,
        /// Erases a stroke along the path.
        CutLine,
        /// Erases the inside of the path.
        CutFill,
    };

    Kind kind;
    QPainterPath path;
    /// Line width as a multiple of the symbol's stroke.
    double strokeFactor = 1;
};

/// Side of the grid on which all symbols are drawn.
inline constexpr double gridSize = 24;
/// Stroke in grid units that matches text of regular weight.
inline constexpr double regularStroke = 1.75;

/// All symbol names, sorted.
QStringList names();

/// Whether there is a symbol of this name.
bool contains(const QString &name);

/// The drawing steps of a symbol at a size in logical pixels; small sizes have fewer details. Empty for an
/// unknown name.
QList<Step> steps(const QString &name, double size);

/// A white symbol of `size` logical pixels on a transparent background; `stroke` is in grid units.
QImage image(const QString &name, double size, double devicePixelRatio, double stroke = regularStroke);

/// Parses SVG path notation: M, L, H, V, C, S, Q, A and Z, absolute or relative.
QPainterPath fromNotation(QLatin1String notation);

} // namespace SymbolPaths
