#pragma once

#include "Platform/OverlayWindowSystem.h"

#include <QList>

#include <utility>

/// A desktop that only remembers what it was asked for.
class RecordingWindowSystem final : public OverlayWindowSystem {
public:
    int preparedCount = 0;
    /// The touched and the drawn part of every shape.
    QList<std::pair<RoundedRectangle, RoundedRectangle>> shapes;

    void prepare(QWindow &) override { ++preparedCount; }
    void setShape(QWindow &, const RoundedRectangle &touched, const RoundedRectangle &drawn) override {
        shapes.append({ touched, drawn });
    }
};
