#pragma once

#include "TolmiApp/FlowCollaborators.h"

// The parts of the flow that the program does not have yet. They do nothing.

class QuietTransitionSound final : public TransitionSound {
public:
    void sync(const DictationState &, ProcessingTransitionSound, double) override { }
};

class QuietOverlay final : public DictationOverlay {
public:
    void show(const DictationState &, AppLanguage) override { }
    void hide() override { }
    void updateAudioLevel(double) override { }
};

class QuietHistory final : public DictationHistory {
public:
    void add(const FinishedDictation &) override { }
};

class QuietRetentionSweep final : public RetentionSweep {
public:
    void sweep(const FileURL &, qint64, qint64) override { }
};
