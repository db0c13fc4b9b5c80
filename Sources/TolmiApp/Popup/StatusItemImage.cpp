#include "TolmiApp/Popup/StatusItemImage.h"

#include "TolmiApp/Design/Drawing/SymbolPaths.h"

#include <QPainter>

namespace {
/// What panels of every height and density ask for.
constexpr int sides[] { 16, 22, 24, 32, 44, 48, 64 };

QImage picture(int side, const QColor &color) {
    // The outermost tenths of a symbol's square are empty, and a panel leaves room of its own.
    const double size = side * 1.15;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    const QImage symbol = SymbolPaths::image(QStringLiteral("waveform.circle.fill"), size, 1);
    painter.drawImage(QPointF(side - symbol.width(), side - symbol.height()) / 2, symbol);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}
} // namespace

QIcon statusItemImage(Appearance panel) {
    const QColor color = panel == Appearance::Dark ? QColor(Qt::white) : QColor(0x24, 0x24, 0x28);
    QIcon icon;
    for (const int side : sides)
        icon.addPixmap(QPixmap::fromImage(picture(side, color)));
    return icon;
}
