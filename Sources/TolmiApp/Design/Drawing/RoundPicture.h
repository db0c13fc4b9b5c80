#pragma once

#include "TolmiApp/Design/Drawing/PictureItem.h"

#include <QImage>

/// A picture cropped to a disc around its centre. It takes the image, not a URL, so that no stale cached
/// image is shown.
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
