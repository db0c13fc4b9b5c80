#include "Views/CommandCenterFixture.h"

CommandCenterFixture::CommandCenterFixture() {
    m_model.emplace(manager, *history, CommandCenterModel::Platform { clock, microphone },
        CommandCenterModel::Navigation {
            [this](StudioDestination destination) { m_destinations.append(rawValue(destination)); },
            [this] { ++m_resumptions; } });
}

void CommandCenterFixture::addEntry(const QString &target) {
    history->add({ .rawText = QStringLiteral("text"),
        .pasteTargetAppName = target.isEmpty() ? std::nullopt : std::optional(target) });
}
