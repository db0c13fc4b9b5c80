#pragma once

#include "Platform/SystemSound.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

/// Loops the chosen sound while a dictation is processed. Main thread only.
class ProcessingTransitionSoundPlayer final : public TransitionSoundPlayer {
public:
    /// `sounds` must outlive the player.
    explicit ProcessingTransitionSoundPlayer(SystemSounds &sounds);

    /// Starts, changes or stops the sound as needed. `volume` is clamped to 0...1. If a sound cannot be
    /// loaded, nothing plays, and the next call tries again.
    void sync(const DictationState &state, ProcessingTransitionSound selection, double volume) override;

    /// Stops the sound. Does nothing when nothing plays.
    void stop();

private:
    void load(ProcessingTransitionSound selection);

    SystemSounds &m_sounds;
    std::unique_ptr<SystemSound> m_sound;
    ProcessingTransitionSound m_activeSelection = ProcessingTransitionSound::None;
};
