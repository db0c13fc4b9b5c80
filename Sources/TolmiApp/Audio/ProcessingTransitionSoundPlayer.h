#pragma once

#include "Platform/SystemSound.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

/// Loops the chosen sound for as long as a dictation is processed. Main thread only.
class ProcessingTransitionSoundPlayer final : public TransitionSoundPlayer {
public:
    /// `sounds` must outlive the player.
    explicit ProcessingTransitionSoundPlayer(SystemSounds &sounds);

    /// Plays, changes or stops the sound as the three ask for. `volume` is clamped to 0 to 1. A sound that
    /// cannot be loaded leaves silence; the next call tries again.
    void sync(const DictationState &state, ProcessingTransitionSound selection, double volume) override;

    /// Silence. Harmless when nothing plays.
    void stop();

private:
    void load(ProcessingTransitionSound selection);

    SystemSounds &m_sounds;
    std::unique_ptr<SystemSound> m_sound;
    ProcessingTransitionSound m_activeSelection = ProcessingTransitionSound::None;
};
