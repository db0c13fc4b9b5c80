#pragma once

#include "Platform/HttpClient.h"
#include "TolmiCore/OllamaConfiguration.h"
#include "TolmiCore/TextRefiner.h"

/// Cleans up a transcript with a model of the local Ollama service, in one request without retries.
/// Stateless. Main thread only.
class OllamaRefiner final : public TextRefiner {
public:
    /// `client` must outlive the refiner.
    explicit OllamaRefiner(HttpClient &client, OllamaConfiguration config = {});

    /// The model's text, trimmed; `text` unchanged if the model returns none. Throws TextRefinerError, also
    /// for an answer far longer than `text`.
    Task<QString> refine(QString text) override;

private:
    HttpRequest request(const QString &text) const;

    HttpClient &m_client;
    const OllamaConfiguration m_config;
};
