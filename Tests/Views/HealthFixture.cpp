#include "Views/HealthFixture.h"

HealthFixture::HealthFixture() {
    m_settings.store.setWhisperBinaryPath(QStringLiteral("/usr/local/bin/whisper-cli"));
    m_settings.store.setUiLanguage(AppLanguage::English);
    m_model = std::make_unique<HealthModel>(m_settings.store, m_application, service());
}

void HealthFixture::speak(const QString &language) {
    m_settings.store.setUiLanguage(rawValueOrDefault<AppLanguage>(language));
}

StudioHealthCheckService HealthFixture::service() {
    StudioHealthCheckService::Functions functions;
    functions.microphoneStatus = [this] {
        return m_isMicrophoneDenied ? AuthorizationStatus::Denied : AuthorizationStatus::Authorized;
    };
    functions.accessibilityGranted = [] { return true; };
    functions.isExecutable = [](const QString &) { return true; };
    functions.fileExists = [this](const QString &) { return m_isModelThere; };
    functions.ollamaProbe = [this](QUrl, double) { return probe(); };
    return StudioHealthCheckService(std::move(functions), PlatformTexts::forLinux());
}

Task<bool> HealthFixture::probe() {
    ++m_probeCount;
    m_probe.suspend();
    return m_probe.call();
}
