#pragma once

#include <QString>
#include <QUrl>

/// How the local Ollama service is asked.
struct OllamaConfiguration {
    /// What the model is told to do with a transcript.
    static const QString defaultSystemPrompt;
    /// The service's standard address on this machine, as text.
    static const QString defaultEndpoint;

    QUrl endpoint { defaultEndpoint };
    QString model = QStringLiteral("llama3.2:3b");
    /// Seconds without data until a request is given up.
    double timeout = 10.0;
    QString systemPrompt = defaultSystemPrompt;
};
