#pragma once

#include "Platform/StatusItem.h"
#include "TolmiApp/Dictation/DictationFlowManager.h"
#include "TolmiApp/Texts/L10n.h"

#include <QObject>

#include <functional>
#include <memory>

/// Keeps the status item's words and menu in step with the dictation flow.
class StatusItemController final : public QObject {
    Q_OBJECT

public:
    /// What the lines of the menu do; a line that has nothing to do is only read.
    struct Actions {
        /// Also what a press of the item does; desktops that open the menu at every press need the line.
        std::function<void()> togglePopup {};
        std::function<void()> openStudio {};
        std::function<void()> openSettings {};
        std::function<void()> checkForUpdates {};
        std::function<void()> quit {};
    };

    /// `item` outlives the controller.
    StatusItemController(StatusItem &item, std::shared_ptr<DictationFlowManager> flow, Actions actions);

    /// Whether the line for updates can be used; not until this says so.
    void setCanCheckForUpdates(bool canCheck);

private:
    void refresh();
    void reportError();
    StatusMenuEntry entry(L10n::Key title, const std::function<void()> &action) const;
    QString stateText() const;

    StatusItem &m_item;
    std::shared_ptr<DictationFlowManager> m_flow;
    const Actions m_actions;
    bool m_canCheckForUpdates = false;
};
