#pragma once

#include "Platform/PasteKeystroke.h"

#include <algorithm>
#include <functional>
#include <utility>

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
