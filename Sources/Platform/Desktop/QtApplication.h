#pragma once

#include "Platform/Application.h"

/// The Qt application object behind the seam. It must exist before and after this.
class QtApplication final : public Application {
    Q_OBJECT

public:
    QtApplication();

    void setAppearance(std::optional<Appearance> appearance) override;
};
