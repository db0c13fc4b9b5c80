#include "TolmiApp/StatusItemController.h"

#include "TolmiApp/L10n.h"
#include "TolmiApp/SettingsStore.h"

StatusItemController::StatusItemController(
    StatusItem &item, std::shared_ptr<DictationFlowManager> flow, std::function<void()> quit)
    : m_item(item)
    , m_flow(std::move(flow))
    , m_quit(std::move(quit)) {
    connect(m_flow.get(), &DictationFlowManager::stateChanged, this, [this] {
        refresh();
        reportError();
    });
    connect(m_flow.get(), &DictationFlowManager::accessibilityGrantedChanged, this, [this] { refresh(); });
    connect(&m_flow->settings(), &SettingsStore::uiLanguageChanged, this, [this] { refresh(); });
    refresh();
}

void StatusItemController::setPopup(std::function<void()> toggle) {
    m_togglePopup = std::move(toggle);
    m_item.setActivationObserver(m_togglePopup);
    refresh();
}

void StatusItemController::announce() {
    m_item.showMessage(L10n::text(L10n::Key::menuBarTitle, m_flow->settings().uiLanguage()), stateText());
}

void StatusItemController::refresh() {
    const AppLanguage language = m_flow->settings().uiLanguage();
    m_item.setToolTip(L10n::text(L10n::Key::menuBarTitle, language) + QStringLiteral(": ") + stateText());
    std::vector<StatusMenuEntry> menu { { stateText(), {} } };
    if (m_togglePopup)
        menu.push_back({ L10n::text(L10n::Key::menuBarTitle, language), m_togglePopup });
    menu.push_back({ L10n::text(L10n::Key::menuBarQuit, language), m_quit });
    m_item.setMenu(menu);
}

void StatusItemController::reportError() {
    if (m_flow->state().kind() == DictationState::Kind::Error)
        announce();
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
