#pragma once

#include "Platform/Application.h"

#include <QObject>

/// The Qt application object behind the seam. It must exist before and after this.
class QtApplication final : public QObject, public Application {
    Q_OBJECT

public:
    QtApplication();

    void setAppearance(std::optional<Appearance> appearance) override;
    void setDidBecomeActiveObserver(std::function<void()> observer) override;

private:
    std::function<void()> m_didBecomeActive;
};
