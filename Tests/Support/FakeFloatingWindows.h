#pragma once

#include "Platform/FloatingWindows.h"

#include <QGuiApplication>
#include <QList>

#include <functional>
#include <utility>

/// A desktop that only remembers what it was asked for.
class FakeFloatingWindows final : public FloatingWindows {
public:
    int preparedCount = 0;
    /// The touched and the drawn part of every shape.
    QList<std::pair<RoundedRectangle, RoundedRectangle>> shapes;

    /// The user presses something else than the window that is watched.
    std::function<void()> pressElsewhere;

    void prepare(QWindow &) override { ++preparedCount; }
    void setShape(QWindow &, const RoundedRectangle &touched, const RoundedRectangle &drawn) override {
        shapes.append({ touched, drawn });
    }
    void watchPressesElsewhere(QWindow &, std::function<void()> pressed) override {
        pressElsewhere = std::move(pressed);
    }
    QScreen *mainScreen() override { return QGuiApplication::primaryScreen(); }
};
