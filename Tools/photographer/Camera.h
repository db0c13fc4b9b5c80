#pragma once

#include <QImage>
#include <QRect>
#include <QTimer>

#include <functional>

/// Looks at a part of the screen again and again and hands out each picture.
class Camera {
public:
    using Take = std::function<void(const QImage &picture)>;

    /// `perSecond` pictures of `part`, while the object lives and the event loop runs.
    Camera(const QRect &part, int perSecond, Take take);

    /// One picture of a part of the screen as it is now.
    static QImage picture(const QRect &part);

private:
    QTimer m_timer;
};
