#include "TolmiApp/Health/StudioHealthCheckService.h"

#include "Platform/AccessibilityRight.h"
#include "Platform/FileManager.h"
#include "Platform/HttpClient.h"
#include "Platform/LocalListeners.h"
#include "TolmiApp/Settings/SettingsStore.h"

#include <algorithm>

namespace {
using L10n::Key;
using Status = HealthCheckStatus;

/// Seconds; a working service may need this long.
constexpr double shortestProbe = 1.0;
/// Seconds that the total time-out exceeds the idle time-out by.
constexpr double answerAllowance = 2.0;

struct Check {
    const char16_t *id;
    Key title;
};

constexpr Check microphone { u"microphone", Key::healthMicrophone };
constexpr Check accessibility { u"accessibility", Key::healthAccessibility };
constexpr Check binary { u"binary", Key::healthBinary };
constexpr Check model { u"model", Key::healthModel };
constexpr Check ollama { u"ollama", Key::healthOllama };

/// Creates the result of one check in one language.
class Writer {
public:
    Writer(const Check &check, const PlatformTexts &texts, AppLanguage language)
        : m_check(check)
        , m_texts(texts)
        , m_language(language) { }

    HealthCheckItem item(Status status, Key message, const QString &hint) const {
        return { QString::fromUtf16(m_check.id), text(m_check.title), status, text(message), hint };
    }
    HealthCheckItem item(Status status, Key message, Key hint) const {
        return item(status, message, text(hint));
    }

    HealthCheckItem item(Status status, Key message, L10n::Phrase hint) const {
        return item(status, message, m_texts.text(hint, m_language));
    }

private:
    QString text(Key key) const { return m_texts.text(key, m_language); }

    const Check &m_check;
    const PlatformTexts &m_texts;
    AppLanguage m_language;
};

/// The address as typed, if it can be that of an Ollama service.
std::optional<QUrl> validEndpoint(const QString &text) {
    const QUrl url(text);
    const bool isHttp = url.scheme() == QStringLiteral("http") || url.scheme() == QStringLiteral("https");
    return url.isValid() && isHttp && !url.host().isEmpty() ? std::optional(url) : std::nullopt;
}

StudioHealthCheckService::Functions functionsOf(StudioHealthCheckService::Platform platform) {
    return { .microphoneStatus = [platform] { return platform.microphone.status(); },
        .accessibilityGranted = [platform] { return platform.accessibility.state().isAvailable(); },
        .isExecutable
        = [platform](const QString &path) { return platform.fileManager.isExecutableFile(path); },
        .fileExists = [platform](const QString &path) { return platform.fileManager.fileExists(path); },
        .ollamaProbe =
            [platform](QUrl endpoint, double timeout) {
                return StudioHealthCheckService::defaultOllamaProbe(
                    platform.http, std::move(endpoint), timeout);
            },
        .isUntrustedAt =
            [platform](const QUrl &endpoint) {
                return platform.listeners.listenerAt(endpoint) == Listener::Untrusted;
            } };
}
} // namespace

QList<HealthCheckItem> HealthCheckItem::checkingList(AppLanguage language) {
    const PlatformTexts texts = PlatformTexts::forMacOS();
    QList<HealthCheckItem> items;
    for (const Check &check : { microphone, accessibility, binary, model, ollama })
        items.append(Writer(check, texts, language).item(Status::Checking, Key::healthChecking, QString()));
    return items;
}

StudioHealthInput StudioHealthInput::ofSettings(const SettingsStore &settings) {
    return { .whisperBinaryPath = settings.whisperBinaryPath(),
        .modelPath = settings.modelPath(),
        .refinementEnabled = settings.refinementEnabled(),
        .ollamaEndpoint = settings.ollamaEndpoint(),
        .ollamaTimeout = settings.ollamaTimeout(),
        .uiLanguage = settings.uiLanguage() };
}

StudioHealthCheckService::StudioHealthCheckService(Functions functions, PlatformTexts texts)
    : m_functions(std::move(functions))
    , m_texts(texts) { }

StudioHealthCheckService::StudioHealthCheckService(Platform platform, PlatformTexts texts)
    : StudioHealthCheckService(functionsOf(platform), texts) { }

Task<QList<HealthCheckItem>> StudioHealthCheckService::runChecks(StudioHealthInput input) const {
    QList<HealthCheckItem> items = localItems(input);
    items.append(co_await ollamaItem(input));
    co_return items;
}

QList<HealthCheckItem> StudioHealthCheckService::localItems(const StudioHealthInput &input) const {
    return { microphoneItem(input.uiLanguage), accessibilityItem(input.uiLanguage), binaryItem(input),
        modelItem(input) };
}

Task<bool> StudioHealthCheckService::defaultOllamaProbe(HttpClient &client, QUrl endpoint, double timeout) {
    HttpRequest request;
    request.url = appendingPathComponent(std::move(endpoint), QStringLiteral("api/tags"));
    request.idleTimeout = timeout;
    request.totalTimeout = timeout + answerAllowance;
    try {
        const HttpResponse response = co_await client.send(std::move(request));
        co_return response.statusCode >= 200 && response.statusCode <= 299;
    } catch (const std::exception &) {
        co_return false;
    }
}

HealthCheckItem StudioHealthCheckService::microphoneItem(AppLanguage language) const {
    const Writer writer(microphone, m_texts, language);
    switch (m_functions.microphoneStatus()) {
    case AuthorizationStatus::Authorized:
        return writer.item(Status::Ok, Key::healthGranted, Key::healthReadyRecording);
    case AuthorizationStatus::NotDetermined:
        return writer.item(Status::Warning, Key::healthPermissionNotRequested, Key::healthStartToPrompt);
    case AuthorizationStatus::Restricted:
    case AuthorizationStatus::Denied:
        return writer.item(Status::Error, Key::healthAccessDenied, Key::healthEnableMicHint);
    }
    return writer.item(Status::Warning, Key::healthUnknownStatus, Key::healthRecheckPermissions);
}

HealthCheckItem StudioHealthCheckService::accessibilityItem(AppLanguage language) const {
    const Writer writer(accessibility, m_texts, language);
    return m_functions.accessibilityGranted()
        ? writer.item(Status::Ok, Key::healthGranted, Key::healthAccessibilityGrantedHint)
        : writer.item(Status::Error, Key::healthAccessibilityMissing, Key::healthGrantAccessibilityHint);
}

HealthCheckItem StudioHealthCheckService::binaryItem(const StudioHealthInput &input) const {
    const Writer writer(binary, m_texts, input.uiLanguage);
    return m_functions.isExecutable(input.whisperBinaryPath)
        ? writer.item(Status::Ok, Key::healthBinaryFound, input.whisperBinaryPath)
        : writer.item(Status::Error, Key::healthBinaryMissing, Key::healthBinaryMissingHint);
}

HealthCheckItem StudioHealthCheckService::modelItem(const StudioHealthInput &input) const {
    const Writer writer(model, m_texts, input.uiLanguage);
    return m_functions.fileExists(input.modelPath)
        ? writer.item(Status::Ok, Key::healthModelFound, input.modelPath)
        : writer.item(Status::Error, Key::healthModelMissing, Key::healthModelMissingHint);
}

Task<HealthCheckItem> StudioHealthCheckService::ollamaItem(StudioHealthInput input) const {
    const Writer writer(ollama, m_texts, input.uiLanguage);
    if (!input.refinementEnabled)
        co_return writer.item(Status::Warning, Key::healthOllamaDisabled, Key::healthOllamaDisabledHint);
    const std::optional<QUrl> endpoint = validEndpoint(input.ollamaEndpoint);
    if (!endpoint)
        co_return writer.item(Status::Error, Key::healthInvalidEndpoint, Key::healthInvalidEndpointHint);
    if (m_functions.isUntrustedAt(*endpoint))
        co_return writer.item(Status::Error, Key::healthUnreachable, L10n::Phrase::healthStrangerHint);
    const double timeout = std::max(input.ollamaTimeout, shortestProbe);
    const bool isReachable = co_await m_functions.ollamaProbe(*endpoint, timeout);
    co_return isReachable
        ? writer.item(Status::Ok, Key::healthReachable, endpoint->toString(QUrl::FullyEncoded))
        : writer.item(Status::Error, Key::healthUnreachable, Key::healthUnreachableHint);
}
