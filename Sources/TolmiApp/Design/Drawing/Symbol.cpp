#include "TolmiApp/Design/Drawing/Symbol.h"

#include "TolmiApp/Design/Drawing/SoftAlpha.h"

#include <QPainter>

Symbol::Symbol(QQuickItem *parent)
    : PictureItem(parent) {
    setImplicitSize(m_size, m_size);
}

void Symbol::setName(const QString &name) {
    if (m_name == name)
        return;
    if (!name.isEmpty() && !SymbolPaths::contains(name))
        qWarning("there is no symbol named \"%s\"", qUtf8Printable(name));
    m_name = name;
    redraw();
    Q_EMIT nameChanged();
}

void Symbol::setSize(double size) {
    if (m_size == size)
        return;
    m_size = size;
    setImplicitSize(size, size);
    redraw();
    Q_EMIT sizeChanged();
}

void Symbol::paint(QPainter &painter) const {
    const double ratio = painter.device()->devicePixelRatioF();
    const QImage image = blur() > 0 ? softImage(ratio) : sharpImage(ratio);
    const QSizeF size = image.deviceIndependentSize();
    painter.drawImage(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), image);
}

QImage Symbol::sharpImage(double devicePixelRatio) const {
    QImage image = SymbolPaths::image(m_name, m_size, devicePixelRatio, stroke());
    // The outer tenths of the grid are empty, so the gradient spans the rest.
    QLinearGradient tint(0, m_size * 0.1, 0, m_size * 0.9);
    tint.setColorAt(0, color());
    tint.setColorAt(1, endColor().isValid() ? endColor() : color());
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(QRectF(0, 0, m_size, m_size), tint);
    return image;
}

QImage Symbol::softImage(double devicePixelRatio) const {
    const QImage sharp = SymbolPaths::image(m_name, m_size, devicePixelRatio, stroke());
    const QSize pixels(qCeil(width() * devicePixelRatio), qCeil(height() * devicePixelRatio));
    QImage canvas(pixels, QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(devicePixelRatio);
    canvas.fill(Qt::transparent);
    {
        QPainter painter(&canvas);
        painter.drawImage(QPointF((width() - m_size) / 2, (height() - m_size) / 2), sharp);
    }
    SoftAlpha alpha(canvas);
    alpha.blur(blur() * devicePixelRatio);
    QImage result = alpha.image(color());
    result.setDevicePixelRatio(devicePixelRatio);
    return result;
}
