#pragma once

#include "Platform/FloatingWindows.h"

#include <QList>

#include <utility>

/// A desktop that only remembers what it was asked for.
class FakeFloatingWindows final : public FloatingWindows {
public:
    int preparedCount = 0;
    /// The touched and the drawn part of every shape.
    QList<std::pair<RoundedRectangle, RoundedRectangle>> shapes;

    void prepare(QWindow &) override { ++preparedCount; }
    void setShape(QWindow &, const RoundedRectangle &touched, const RoundedRectangle &drawn) override {
        shapes.append({ touched, drawn });
    }
};
