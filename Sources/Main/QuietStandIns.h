#pragma once

#include "TolmiApp/FlowCollaborators.h"

// The parts of the flow that the program does not have yet. They do nothing.

class QuietOverlay final : public DictationOverlay {
public:
    void show(const DictationState &, AppLanguage) override { }
    void hide() override { }
    void updateAudioLevel(double) override { }
};
