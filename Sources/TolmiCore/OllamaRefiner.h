#pragma once

#include "Platform/HttpClient.h"
#include "TolmiCore/OllamaConfiguration.h"
#include "TolmiCore/TextRefiner.h"

/// Has a transcript cleaned up by a model of the local Ollama service, in one request without a retry. It
/// keeps nothing between calls. Main thread only.
class OllamaRefiner final : public TextRefiner {
public:
    /// `client` must outlive the refiner.
    explicit OllamaRefiner(HttpClient &client, OllamaConfiguration config = {});

    /// The model's text, trimmed; `text` as it came when the model has nothing to say. Throws
    /// TextRefinerError, also for a text far longer than the given one.
    Task<QString> refine(QString text) override;

private:
    HttpRequest request(const QString &text) const;

    HttpClient &m_client;
    const OllamaConfiguration m_config;
};
