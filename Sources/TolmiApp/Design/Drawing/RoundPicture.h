#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QImage>

/// A picture cut to a disc that its middle fills. It takes the picture itself and not an address, so nothing
/// that another address once gave is ever shown.
class RoundPicture : public PictureItem {
    Q_OBJECT
    QML_ELEMENT
    TOLMI_PICTURE_PROPERTY(QImage, image, setImage, QImage())
    /// Whether there is nothing to show.
    Q_PROPERTY(bool isEmpty READ isEmpty NOTIFY imageChanged)

public:
    using PictureItem::PictureItem;

    bool isEmpty() const { return image().isNull(); }

protected:
    void paint(QPainter &painter) const override;
};
