#pragma once

#include "Platform/Application.h"
#include "Platform/DesktopLook.h"

#include <QObject>

class QWindow;

/// The Qt application object behind the seam. It must exist before and after this.
class QtApplication : public QObject, public Application {
    Q_OBJECT

public:
    /// `look` tells what "as the system" means, and outlives this.
    explicit QtApplication(const DesktopLook &look);

    void setAppearance(std::optional<Appearance> appearance) final;
    void setDidBecomeActiveObserver(std::function<void()> observer) final;
    void activate() final;
    void orderFront(const QString &title) final;

protected:
    /// Puts a window that is shown before all others, as far as the toolkit can.
    virtual void bringToFront(QWindow &window);

private:
    void applyAppearance();

    const DesktopLook &m_look;
    std::optional<Appearance> m_appearance;
    std::function<void()> m_didBecomeActive;
};
