#pragma once

#include "TolmiApp/CommandCenter/CommandCenterModel.h"
#include "Views/FlowFixture.h"

#include <optional>

/// The start page's model.
class CommandCenterFixture : public FlowFixture {
    Q_OBJECT
    Q_PROPERTY(CommandCenterModel *model READ model CONSTANT)
    /// The stored names of the workspaces navigated to, in order.
    Q_PROPERTY(QStringList destinations READ destinations)
    /// How often the wizard was requested.
    Q_PROPERTY(int resumptions READ resumptions)

public:
    CommandCenterFixture();

    CommandCenterModel *model() { return &*m_model; }
    const QStringList &destinations() const { return m_destinations; }
    int resumptions() const { return m_resumptions; }

    /// Adds an entry to the history; an empty target means none.
    Q_INVOKABLE void addEntry(const QString &target);

private:
    QStringList m_destinations;
    int m_resumptions = 0;
    std::optional<CommandCenterModel> m_model;
};
