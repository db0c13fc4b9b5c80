#pragma once

#include <QPoint>
#include <QRect>

/// Where the popup of the status item stands.
namespace PopupPlacement {

/// Pixels between the popup and what it belongs to.
constexpr int gap = 6;
/// Pixels that stay free between the popup and every edge of the screen.
constexpr int margin = 8;

/// The upper left corner of a popup of `size` that belongs to `anchor`, the status item or the pointer:
/// centred under it in the upper half of `screen`, above it in the lower half, and always wholly on the
/// screen. One that is larger than the screen begins at the upper left.
QPoint origin(const QRect &anchor, QSize size, const QRect &screen);

} // namespace PopupPlacement
