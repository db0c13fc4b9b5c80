#pragma once

#include "Foundation/ObservableObject.h"
#include "TolmiApp/Health/StudioHealthCheckService.h"

#include <QPointer>

class Application;

/// What the workspace of the health checks shows, and when they run. Main thread only.
class HealthModel final : public ObservableObject {
    Q_OBJECT
    /// Always one for each check, in their order; what is not known yet is being checked.
    TOLMI_PUBLISHED_READONLY(QList<HealthCheckItem>, items, setItems)
    /// Whether checks run.
    TOLMI_PUBLISHED_READONLY(bool, isRefreshing, setIsRefreshing)

public:
    /// The checks run anew in another language of the interface and when the application comes to the front.
    /// `settings` outlives the model.
    HealthModel(
        const SettingsStore &settings, const Application &application, StudioHealthCheckService service);

    /// Starts the checks, even while others run; what finishes last is shown.
    Q_INVOKABLE void runChecks();

private:
    static Task<> run(QPointer<HealthModel> model, StudioHealthCheckService service, StudioHealthInput input);

    const SettingsStore &m_settings;
    const StudioHealthCheckService m_service;
};
