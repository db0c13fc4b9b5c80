#pragma once

#include "Platform/AccessibilityRight.h"

#include <vector>

/// A right to watch and post keys that the test grants.
class FakeAccessibilityRight final : public AccessibilityRight {
public:
    Availability state() override {
        calls.push_back(QStringLiteral("state"));
        return availability;
    }
    void prompt() override { calls.push_back(QStringLiteral("prompt")); }
    void openSettings() override { calls.push_back(QStringLiteral("openSettings")); }

    Availability availability = Availability::available();
    std::vector<QString> calls;
};
