#pragma once

#include "Platform/Desktop/QtApplication.h"

/// The application on an X server, whose window managers keep a program that the user does not work in from
/// taking the focus, unless it says that the user asked for it.
class X11Application final : public QtApplication {
    Q_OBJECT

public:
    using QtApplication::QtApplication;

protected:
    void bringToFront(QWindow &window) override;
    bool eventFilter(QObject *watched, QEvent *event) override;
};
