#pragma once

#include "Foundation/ObservableObject.h"
#include "Platform/OverlayWindow.h"
#include "TolmiApp/Contracts/FlowCollaborators.h"

#include <memory>

/// What the overlay shows.
class OverlayViewModel : public ObservableObject {
    Q_OBJECT
    TOLMI_PUBLISHED(DictationState, state, setState, refreshHelpMessage())
    TOLMI_PUBLISHED(AppLanguage, language, setLanguage, refreshHelpMessage())
    TOLMI_PUBLISHED(double, audioLevel, setAudioLevel)
    /// The state in the words of the language; empty while nothing happens.
    TOLMI_PUBLISHED_READONLY(QString, helpMessage, setHelpMessage)

public:
    using ObservableObject::ObservableObject;

private:
    void refreshHelpMessage();
};

/// Owns the overlay: tells its model what to show, places it and fades it. Main thread only.
class OverlayPanelController final : public OverlayPanel {
public:
    /// Builds the hidden panel that draws a model, which outlives it.
    using PanelFactory = std::function<std::unique_ptr<OverlayWindow>(OverlayViewModel &)>;

    explicit OverlayPanelController(const PanelFactory &makePanel);

    /// Side of the square panel.
    static constexpr int panelSize = 150;

    /// Shows the panel, placed anew in the middle of the top edge of the screen that has the keyboard. A
    /// panel that was fading comes back, and goes when the old fade is over.
    void show(const DictationState &state, AppLanguage language) override;
    /// Fades the panel out; the model keeps its state.
    void hide() override;
    void updateAudioLevel(double level) override;

private:
    void place();

    OverlayViewModel m_viewModel;
    std::shared_ptr<OverlayWindow> m_panel;
};
