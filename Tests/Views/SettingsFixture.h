#pragma once

#include "Support/SettingsModelFixture.h"
#include "TolmiApp/Shell/ViewTexts.h"

#include <optional>

/// The settings workspace's model with a fake platform, for tests written in QML. The interface is in
/// English.
class SettingsFixture : public QObject {
    Q_OBJECT
    Q_PROPERTY(SettingsModel *model READ model CONSTANT)
    Q_PROPERTY(SettingsStore *store READ store CONSTANT)
    Q_PROPERTY(QObject *texts READ texts CONSTANT)

public:
    /// Creates everything, for a program with or without an updater. Call once, first.
    Q_INVOKABLE void start(bool isConfigured);

    SettingsModel *model() { return &m_place->model; }
    SettingsStore *store() { return &m_place->store; }
    QObject *texts() { return &*m_texts; }

    /// The calls to sounds, in order.
    Q_INVOKABLE QStringList soundCalls() const { return m_place->sounds.calls; }
    Q_INVOKABLE int updateCheckCount() const { return m_place->controller->checkCount; }
    Q_INVOKABLE void setCanCheckForUpdates(bool canCheck);
    /// How often the view navigated to another workspace.
    Q_INVOKABLE int navigationCount() const { return int(m_place->destinations.size()); }

private:
    std::optional<SettingsModelFixture> m_place;
    std::optional<ViewTexts> m_texts;
};
