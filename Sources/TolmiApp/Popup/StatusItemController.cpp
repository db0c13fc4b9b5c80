#include "TolmiApp/Popup/StatusItemController.h"

#include "TolmiApp/Settings/SettingsStore.h"

StatusItemController::StatusItemController(
    StatusItem &item, std::shared_ptr<DictationFlowManager> flow, Actions actions)
    : m_item(item)
    , m_flow(std::move(flow))
    , m_actions(std::move(actions)) {
    connect(m_flow.get(), &DictationFlowManager::stateChanged, this, [this] {
        refresh();
        reportError();
    });
    connect(m_flow.get(), &DictationFlowManager::accessibilityGrantedChanged, this, [this] { refresh(); });
    connect(&m_flow->settings(), &SettingsStore::uiLanguageChanged, this, [this] { refresh(); });
    m_item.setActivationObserver(m_actions.togglePopup);
    refresh();
}

void StatusItemController::setCanCheckForUpdates(bool canCheck) {
    m_canCheckForUpdates = canCheck;
    refresh();
}

void StatusItemController::refresh() {
    const AppLanguage language = m_flow->settings().uiLanguage();
    m_item.setToolTip(L10n::labelled(L10n::Key::menuBarTitle, stateText(), language));
    m_item.setMenu({ { stateText(), {} }, entry(L10n::Key::menuBarTitle, m_actions.togglePopup),
        entry(L10n::Key::menuBarOpenStudio, m_actions.openStudio),
        entry(L10n::Key::menuBarSettings, m_actions.openSettings),
        entry(L10n::Key::menuBarCheckForUpdates,
            m_canCheckForUpdates ? m_actions.checkForUpdates : std::function<void()>()),
        entry(L10n::Key::menuBarQuit, m_actions.quit) });
}

StatusMenuEntry StatusItemController::entry(L10n::Key title, const std::function<void()> &action) const {
    return { L10n::text(title, m_flow->settings().uiLanguage()), action };
}

void StatusItemController::reportError() {
    if (m_flow->state().kind() == DictationState::Kind::Error)
        m_item.showMessage(L10n::text(L10n::Key::menuBarTitle, m_flow->settings().uiLanguage()), stateText());
}

QString StatusItemController::stateText() const {
    const AppLanguage language = m_flow->settings().uiLanguage();
    const DictationState &state = m_flow->state();
    if (state.kind() == DictationState::Kind::Error)
        return state.message();
    if (state.kind() == DictationState::Kind::Idle && !m_flow->accessibilityGranted())
        return L10n::text(L10n::Key::menuBarAccessibilityRequired, language);
    return L10n::dictationStateLabel(state, language);
}
