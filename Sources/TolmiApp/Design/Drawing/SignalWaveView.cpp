#include "TolmiApp/Design/Drawing/SignalWaveView.h"

#include "TolmiApp/Design/Drawing/MeterGeometry.h"

#include <QPainter>

namespace {
constexpr double capsuleWidth = 3;
constexpr double greatestHeight = 72;
} // namespace

SignalWaveView::SignalWaveView(QQuickItem *parent)
    : PictureItem(parent) {
    resize();
}

void SignalWaveView::setBars(int bars) {
    if (m_bars == bars)
        return;
    m_bars = bars;
    resize();
    Q_EMIT barsChanged();
}

void SignalWaveView::setSpacing(double spacing) {
    if (m_spacing == spacing)
        return;
    m_spacing = spacing;
    resize();
    Q_EMIT spacingChanged();
}

void SignalWaveView::resize() {
    setImplicitSize(m_bars * (capsuleWidth + m_spacing) - m_spacing, greatestHeight);
    redraw();
}

void SignalWaveView::paint(QPainter &painter) const {
    painter.setPen(Qt::NoPen);
    painter.setBrush(tint());
    painter.setOpacity(isActive() ? 0.95 : 0.15);
    for (int index = 0; index < m_bars; ++index) {
        const double tall = MeterGeometry::barHeight(index, m_bars, isActive(), level());
        const QRectF capsule(index * (capsuleWidth + m_spacing), (height() - tall) / 2, capsuleWidth, tall);
        painter.drawRoundedRect(capsule, capsuleWidth / 2, capsuleWidth / 2);
    }
}
