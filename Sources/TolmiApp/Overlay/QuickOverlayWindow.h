#pragma once

#include "Platform/FloatingWindows.h"
#include "Platform/OverlayWindow.h"

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <memory>

class OverlayViewModel;
class QQuickView;

/// The overlay as a window of the desktop.
class QuickOverlayWindow final : public QObject, public OverlayWindow {
    Q_OBJECT

public:
    /// Builds the hidden window. The model and the desktop outlive it.
    QuickOverlayWindow(OverlayViewModel &viewModel, FloatingWindows &floatingWindows);
    ~QuickOverlayWindow() override;

    std::optional<QRect> visibleFrame() const override;
    void setOrigin(const QPoint &origin) override;
    void orderFront() override;
    void fadeOut(double seconds, std::function<void()> completion) override;
    void orderOut() override;

    /// The window itself, for those who look at what it draws.
    QQuickView &view() { return *m_view; }

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    struct Fade {
        double seconds;
        std::function<void()> completion;
        QElapsedTimer since;
        bool isVisible;
    };

    void stepFades();
    void reshape();

    std::unique_ptr<QQuickView> m_view;
    OverlayViewModel &m_viewModel;
    FloatingWindows &m_floatingWindows;
    QBasicTimer m_fadeTimer;
    /// Oldest first. A fade that the window was shown again over is not seen any more, but still ends.
    QList<Fade> m_fades;
};
