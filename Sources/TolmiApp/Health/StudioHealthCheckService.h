#pragma once

#include "Foundation/Task.h"
#include "Platform/MicrophonePermission.h"
#include "TolmiApp/Texts/PlatformTexts.h"

#include <QList>
#include <QObject>
#include <QUrl>

#include <functional>

class AccessibilityRight;
class FileManager;
class HttpClient;
class LocalListeners;
class SettingsStore;

/// One check of what a dictation needs, worded in the interface language.
struct HealthCheckItem {
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(Status status MEMBER status CONSTANT)
    Q_PROPERTY(QString message MEMBER message CONSTANT)
    Q_PROPERTY(QString hint MEMBER hint CONSTANT)

public:
    enum class Status {
        Checking,
        Ok,
        Warning,
        Error,
    };
    Q_ENUM(Status)

    /// "microphone", "accessibility", "binary", "model" or "ollama".
    QString id;
    QString title;
    Status status = Status::Checking;
    /// The outcome in one line.
    QString message;
    /// A remedy, a path, a URL, or empty.
    QString hint;

    /// All checks in order, before their outcomes are known.
    static QList<HealthCheckItem> checkingList(AppLanguage language);

    friend bool operator==(const HealthCheckItem &, const HealthCheckItem &) = default;
};

using HealthCheckStatus = HealthCheckItem::Status;

/// The settings that are checked.
struct StudioHealthInput {
    QString whisperBinaryPath;
    QString modelPath;
    bool refinementEnabled = true;
    /// As typed.
    QString ollamaEndpoint;
    /// Seconds.
    double ollamaTimeout = 10.0;
    AppLanguage uiLanguage = RawValues<AppLanguage>::fallback;

    static StudioHealthInput ofSettings(const SettingsStore &settings);

    friend bool operator==(const StudioHealthInput &, const StudioHealthInput &) = default;
};

/// Checks whether this machine can dictate right now. Stateless; accesses the system only through its
/// functions.
class StudioHealthCheckService {
public:
    struct Functions {
        std::function<AuthorizationStatus()> microphoneStatus;
        std::function<bool()> accessibilityGranted;
        std::function<bool(const QString &path)> isExecutable;
        std::function<bool(const QString &path)> fileExists;
        /// Whether the service at `endpoint` answers within `timeout` seconds.
        std::function<Task<bool>(QUrl endpoint, double timeout)> ollamaProbe;
        /// Whether another user's program listens at `endpoint`, so that nothing is sent there.
        std::function<bool(const QUrl &endpoint)> isUntrustedAt = [](const QUrl &) { return false; };
    };

    /// The platform services that the default functions use. All must outlive the service.
    struct Platform {
        MicrophonePermission &microphone;
        AccessibilityRight &accessibility;
        const FileManager &fileManager;
        HttpClient &http;
        const LocalListeners &listeners;
    };

    StudioHealthCheckService(Functions functions, PlatformTexts texts);
    /// Uses the default functions.
    StudioHealthCheckService(Platform platform, PlatformTexts texts);

    /// Runs all checks one after the other, in the order of HealthCheckItem::checkingList(). Never fails. The
    /// service must outlive the task.
    Task<QList<HealthCheckItem>> runChecks(StudioHealthInput input) const;

    /// The results of all checks but that of Ollama, which takes its time; in the same order.
    QList<HealthCheckItem> localItems(const StudioHealthInput &input) const;

    /// Whether Ollama at `endpoint` answers a request for its models with a status from 200 to 299 within an
    /// idle time-out of `timeout` seconds.
    static Task<bool> defaultOllamaProbe(HttpClient &client, QUrl endpoint, double timeout);

private:
    HealthCheckItem microphoneItem(AppLanguage language) const;
    HealthCheckItem accessibilityItem(AppLanguage language) const;
    HealthCheckItem binaryItem(const StudioHealthInput &input) const;
    HealthCheckItem modelItem(const StudioHealthInput &input) const;
    Task<HealthCheckItem> ollamaItem(StudioHealthInput input) const;

    Functions m_functions;
    PlatformTexts m_texts;
};
