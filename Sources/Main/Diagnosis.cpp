#include "Main/Diagnosis.h"

#include "Main/Adapters.h"
#include "TolmiApp/Health/StudioHealthCheckService.h"

StudioHealthCheckService healthChecks(Adapters &adapters) {
    return { StudioHealthCheckService::Platform { adapters.microphone, adapters.accessibility,
                 adapters.fileManager, adapters.http, adapters.listeners },
        PlatformTexts::forLinux() };
}

std::vector<OperationMethod> diagnosis(Adapters &adapters, const SettingsStore &settings) {
    std::vector<OperationMethod> rows = adapters.methods();
    StudioHealthInput input = StudioHealthInput::ofSettings(settings);
    input.uiLanguage = AppLanguage::English;
    for (const HealthCheckItem &item : healthChecks(adapters).localItems(input)) {
        // Key and paste tell of this one in detail.
        if (item.id == u"accessibility")
            continue;
        const QString operation = item.id == u"binary" ? QStringLiteral("whisper-cli") : item.id;
        rows.push_back({ operation, item.message, item.status != HealthCheckStatus::Error, item.hint });
    }
    return rows;
}
