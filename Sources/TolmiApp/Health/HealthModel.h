#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/Health/StudioHealthCheckService.h"

#include <QPointer>

class Application;

/// Model of the health workspace: runs the checks and holds their outcomes. Main thread only.
class HealthModel final : public ObservableObject {
    Q_OBJECT
    /// Always one per check, in order; unknown outcomes have the status "checking".
    TOLMI_PUBLISHED_READONLY(QList<HealthCheckItem>, items, setItems)
    /// Whether checks are running.
    TOLMI_PUBLISHED_READONLY(bool, isRefreshing, setIsRefreshing)

public:
    /// The checks run again when the interface language changes and when the application becomes active.
    /// `settings` must outlive the model.
    HealthModel(
        const SettingsStore &settings, const Application &application, StudioHealthCheckService service);

    /// Starts the checks, even while others run; the last to finish is shown.
    Q_INVOKABLE void runChecks();

private:
    static Task<> run(QPointer<HealthModel> model, StudioHealthCheckService service, StudioHealthInput input);

    const SettingsStore &m_settings;
    const StudioHealthCheckService m_service;
};
