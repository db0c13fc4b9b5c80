#pragma once

#include <QString>
#include <QUrl>

/// Settings for requests to the local Ollama service.
struct OllamaConfiguration {
    /// The default instructions for the model.
    static const QString defaultSystemPrompt;
    /// The service's default address on this machine.
    static const QString defaultEndpoint;

    QUrl endpoint { defaultEndpoint };
    QString model = QStringLiteral("llama3.2:3b");
    /// Idle time-out of a request in seconds.
    double timeout = 10.0;
    QString systemPrompt = defaultSystemPrompt;
};
