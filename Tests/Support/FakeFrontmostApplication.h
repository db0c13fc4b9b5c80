#pragma once

#include "Platform/FrontmostApplication.h"

#include <functional>

/// An application in front that the test chooses.
class FakeFrontmostApplication final : public FrontmostApplication {
public:
    std::optional<FrontApplication> current() override {
        if (onCall)
            onCall();
        return application;
    }

    std::optional<FrontApplication> application;
    std::function<void()> onCall;
};
