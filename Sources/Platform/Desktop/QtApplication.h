#pragma once

#include "Platform/Application.h"
#include "Platform/DesktopLook.h"

class QWindow;

/// Wraps the Qt application object, which must outlive this.
class QtApplication : public Application {
    Q_OBJECT

public:
    /// `look` reports the system's appearance and must outlive this.
    explicit QtApplication(const DesktopLook &look);

    void setAppearance(std::optional<Appearance> appearance) final;
    void activate() final;
    void orderFront(const QString &title) final;

protected:
    /// Brings a visible window to the front, as far as the toolkit can.
    virtual void bringToFront(QWindow &window);

private:
    void applyAppearance();

    const DesktopLook &m_look;
    std::optional<Appearance> m_appearance;
};
