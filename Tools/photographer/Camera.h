#pragma once

#include <QImage>
#include <QRect>
#include <QTimer>

#include <functional>

/// Captures a part of the screen repeatedly.
class Camera {
public:
    using Take = std::function<void(const QImage &picture)>;

    /// Passes `perSecond` pictures of `part` to `take` while the object exists and the event loop runs.
    Camera(const QRect &part, int perSecond, Take take);

    /// Captures a part of the screen once.
    static QImage picture(const QRect &part);

private:
    QTimer m_timer;
};
