#pragma once

#include "Platform/OverlayWindow.h"

#include <QStringList>

/// A floating window that only remembers what it was told.
class FakeOverlayWindow final : public OverlayWindow {
public:
    /// Every call in its order, as "origin 885,8", "front", "fade 0.25" and "out".
    QStringList calls;
    /// What ends each fade, oldest first.
    QList<std::function<void()>> completions;
    std::optional<QRect> frame = QRect(0, 30, 1920, 1050);

    std::optional<QRect> visibleFrame() const override { return frame; }
    void setOrigin(const QPoint &origin) override {
        calls.append(QStringLiteral("origin %1,%2").arg(origin.x()).arg(origin.y()));
    }
    void orderFront() override { calls.append(QStringLiteral("front")); }
    void fadeOut(double seconds, std::function<void()> completion) override {
        calls.append(QStringLiteral("fade %1").arg(seconds));
        completions.append(std::move(completion));
    }
    void orderOut() override { calls.append(QStringLiteral("out")); }
};
