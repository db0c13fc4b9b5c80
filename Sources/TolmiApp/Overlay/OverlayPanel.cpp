#include "TolmiApp/Overlay/OverlayPanel.h"

#include "TolmiApp/Audio/AudioMeterMath.h"
#include "TolmiApp/Texts/L10n.h"

namespace {

constexpr int distanceFromTop = 8;
constexpr double fadeSeconds = 0.25;

QString helpMessageFor(const DictationState &state, AppLanguage language) {
    using Kind = DictationState::Kind;
    switch (state.kind()) {
    case Kind::Idle:
        return {};
    case Kind::Recording:
        return L10n::text(L10n::Key::overlayListening, language);
    case Kind::Transcribing:
        return L10n::text(L10n::Key::overlayTranscribing, language);
    case Kind::OptimizingQuality:
        return L10n::text(L10n::Key::overlayOptimizingQuality, language);
    case Kind::Refining:
        return L10n::text(L10n::Key::overlayRefining, language);
    case Kind::Pasting:
        return L10n::text(L10n::Key::overlayPasting, language);
    case Kind::Done:
        return L10n::text(L10n::Key::overlayDone, language);
    case Kind::Error:
        return state.message();
    }
    Q_UNREACHABLE();
}

} // namespace

void OverlayViewModel::refreshHelpMessage() {
    setHelpMessage(helpMessageFor(state(), language()));
}

OverlayPanelController::OverlayPanelController(const PanelFactory &makePanel)
    : m_panel(makePanel(m_viewModel)) { }

void OverlayPanelController::show(const DictationState &state, AppLanguage language) {
    m_viewModel.setState(state);
    m_viewModel.setLanguage(language);
    if (state.kind() != DictationState::Kind::Recording)
        m_viewModel.setAudioLevel(0);
    place();
    m_panel->orderFront();
}

void OverlayPanelController::place() {
    const std::optional<QRect> frame = m_panel->visibleFrame();
    if (!frame)
        return;
    const int left = frame->x() + (frame->width() - panelSize) / 2;
    m_panel->setOrigin({ left, frame->y() + distanceFromTop });
}

void OverlayPanelController::hide() {
    m_viewModel.setAudioLevel(0);
    m_panel->fadeOut(fadeSeconds, [panel = std::weak_ptr(m_panel)] {
        if (const auto alive = panel.lock())
            alive->orderOut();
    });
}

void OverlayPanelController::updateAudioLevel(double level) {
    m_viewModel.setAudioLevel(AudioMeterMath::clamp(level));
}
