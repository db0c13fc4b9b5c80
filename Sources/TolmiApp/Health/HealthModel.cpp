#include "TolmiApp/Health/HealthModel.h"

#include "Platform/Application.h"
#include "TolmiApp/Settings/SettingsStore.h"

HealthModel::HealthModel(
    const SettingsStore &settings, const Application &application, StudioHealthCheckService service)
    : m_settings(settings)
    , m_service(std::move(service)) {
    setItems(HealthCheckItem::checkingList(settings.uiLanguage()));
    connect(&settings, &SettingsStore::uiLanguageChanged, this, &HealthModel::runChecks);
    // The user may come back from granting a permission in the system's settings.
    connect(&application, &Application::didBecomeActive, this, &HealthModel::runChecks);
}

void HealthModel::runChecks() {
    setIsRefreshing(true);
    setItems(HealthCheckItem::checkingList(m_settings.uiLanguage()));
    launch(run(this, m_service, StudioHealthInput::ofSettings(m_settings)));
}

Task<> HealthModel::run(
    QPointer<HealthModel> model, StudioHealthCheckService service, StudioHealthInput input) {
    QList<HealthCheckItem> items = co_await service.runChecks(std::move(input));
    if (!model)
        co_return;
    model->setItems(std::move(items));
    model->setIsRefreshing(false);
}
