#include "TolmiApp/Popup/PopupPlacement.h"

#include <algorithm>

namespace PopupPlacement {

namespace {

int within(int position, int length, int start, int end) {
    return std::max(start + margin, std::min(position, end - margin - length));
}

} // namespace

QPoint origin(const QRect &anchor, QSize size, const QRect &screen) {
    const bool isInUpperHalf = anchor.center().y() < screen.center().y();
    const int x = anchor.x() + (anchor.width() - size.width()) / 2;
    const int y = isInUpperHalf ? anchor.y() + anchor.height() + gap : anchor.y() - gap - size.height();
    return { within(x, size.width(), screen.x(), screen.x() + screen.width()),
        within(y, size.height(), screen.y(), screen.y() + screen.height()) };
}

} // namespace PopupPlacement
