#pragma once

#include "Platform/Keyboard.h"

#include <QString>

#include <algorithm>
#include <utility>
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

/// A paste command that goes nowhere, under fingers that let go after some looks.
class FakePasteKeystroke final : public PasteKeystroke {
public:
    bool isModifierHeld() override {
        ++lookCount;
        return std::exchange(looksWithHeldModifier, std::max(looksWithHeldModifier - 1, 0)) > 0;
    }
    void post() override {
        ++postCount;
        if (onPost)
            onPost();
    }

    /// How many of the next looks find a modifier held.
    int looksWithHeldModifier = 0;
    int lookCount = 0;
    int postCount = 0;
    std::function<void()> onPost;
};
