#pragma once

#include "Platform/StatusItem.h"
#include "TolmiApp/DictationFlowManager.h"

#include <QObject>

#include <functional>
#include <memory>

/// Keeps the status item's words and menu in step with the dictation flow.
class StatusItemController final : public QObject {
    Q_OBJECT

public:
    /// `item` outlives the controller; `quit` ends the program.
    StatusItemController(
        StatusItem &item, std::shared_ptr<DictationFlowManager> flow, std::function<void()> quit);

    /// Has a press of the item show and hide the popup. An entry of the menu does the same, for desktops that
    /// open the menu at every press.
    void setPopup(std::function<void()> toggle);

    /// Tells the user where the program is, for a start of a program that runs already.
    void announce();

private:
    void refresh();
    void reportError();
    QString stateText() const;

    StatusItem &m_item;
    std::shared_ptr<DictationFlowManager> m_flow;
    std::function<void()> m_quit;
    std::function<void()> m_togglePopup;
};
