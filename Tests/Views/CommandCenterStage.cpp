#include "Views/CommandCenterStage.h"

CommandCenterStage::CommandCenterStage() {
    m_model.emplace(manager, *history, CommandCenterModel::Platform { clock, microphone },
        CommandCenterModel::Navigation {
            [this](StudioDestination destination) { m_destinations.append(rawValue(destination)); },
            [this] { ++m_resumptions; } });
}

void CommandCenterStage::addEntry(const QString &target) {
    history->add({ .rawText = QStringLiteral("text"),
        .pasteTargetAppName = target.isEmpty() ? std::nullopt : std::optional(target) });
}
