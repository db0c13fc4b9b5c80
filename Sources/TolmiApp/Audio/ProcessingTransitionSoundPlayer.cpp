#include "TolmiApp/Audio/ProcessingTransitionSoundPlayer.h"

#include <algorithm>

namespace {
bool shouldPlay(const DictationState &state) {
    switch (state.kind()) {
    case DictationState::Kind::Transcribing:
    case DictationState::Kind::OptimizingQuality:
    case DictationState::Kind::Refining:
        return true;
    case DictationState::Kind::Idle:
    case DictationState::Kind::Recording:
    case DictationState::Kind::Pasting:
    case DictationState::Kind::Done:
    case DictationState::Kind::Error:
        break;
    }
    return false;
}
} // namespace

ProcessingTransitionSoundPlayer::ProcessingTransitionSoundPlayer(SystemSounds &sounds)
    : m_sounds(sounds) { }

void ProcessingTransitionSoundPlayer::sync(
    const DictationState &state, ProcessingTransitionSound selection, double volume) {
    if (!shouldPlay(state) || selection == ProcessingTransitionSound::None) {
        stop();
        return;
    }
    const float clampedVolume = static_cast<float>(std::clamp(volume, 0.0, 1.0));
    if (selection != m_activeSelection || !m_sound)
        load(selection);
    if (!m_sound)
        return;
    m_sound->setVolume(clampedVolume);
    if (!m_sound->isPlaying())
        m_sound->play();
}

void ProcessingTransitionSoundPlayer::stop() {
    if (m_sound)
        m_sound->stop();
    m_sound.reset();
    m_activeSelection = ProcessingTransitionSound::None;
}

void ProcessingTransitionSoundPlayer::load(ProcessingTransitionSound selection) {
    stop();
    m_sound = m_sounds.named(systemSoundName(selection).value_or(QString()));
    if (!m_sound)
        return;
    m_sound->setLoops(true);
    m_activeSelection = selection;
}
