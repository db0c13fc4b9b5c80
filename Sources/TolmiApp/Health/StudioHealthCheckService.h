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

/// One check of what a dictation needs, in the words of the interface's language.
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
    /// The outcome in a line.
    QString message;
    /// A remedy, a path, a URL, or nothing.
    QString hint;

    /// All checks in their order, before their outcome is known.
    static QList<HealthCheckItem> checkingList(AppLanguage language);

    friend bool operator==(const HealthCheckItem &, const HealthCheckItem &) = default;
};

using HealthCheckStatus = HealthCheckItem::Status;

/// The settings that the checks look at.
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

/// Tells whether this machine can dictate right now. A value without state of its own; it asks the system
/// through nothing but its functions.
class StudioHealthCheckService {
public:
    struct Functions {
        std::function<AuthorizationStatus()> microphoneStatus;
        std::function<bool()> accessibilityGranted;
        std::function<bool(const QString &path)> isExecutable;
        std::function<bool(const QString &path)> fileExists;
        /// Whether the service at `endpoint` answers within `timeout` seconds.
        std::function<Task<bool>(QUrl endpoint, double timeout)> ollamaProbe;
        /// Whether somebody else's program listens at `endpoint`, so that nothing is sent there.
        std::function<bool(const QUrl &endpoint)> isStrangerAt = [](const QUrl &) { return false; };
    };

    /// What the usual functions ask. All of it outlives the service.
    struct Platform {
        MicrophonePermission &microphone;
        AccessibilityRight &accessibility;
        const FileManager &fileManager;
        HttpClient &http;
        const LocalListeners &listeners;
    };

    StudioHealthCheckService(Functions functions, PlatformTexts texts);
    /// With the usual functions.
    StudioHealthCheckService(Platform platform, PlatformTexts texts);

    /// The outcome of all checks, one after the other, in the order of HealthCheckItem::checkingList(). Never
    /// fails. The service must outlive the wait.
    Task<QList<HealthCheckItem>> runChecks(StudioHealthInput input) const;

    /// Whether Ollama at `endpoint` answers the question for its models with a status from 200 to 299. Gives
    /// up after `timeout` seconds of silence.
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
