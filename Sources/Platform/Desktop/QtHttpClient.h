#pragma once

#include "Foundation/Clock.h"
#include "Platform/HttpClient.h"

#include <QNetworkAccessManager>

/// Connects to servers directly: no proxy, cookies, cache, compression or state between requests.
class QtHttpClient final : public HttpClient {
public:
    /// `clock` drives both time-outs and must outlive the client.
    explicit QtHttpClient(Clock &clock);

    Task<HttpResponse> send(HttpRequest request) override;
    Task<HttpResponse> download(HttpRequest request, HttpProgress progress) override;

private:
    Clock &m_clock;
    QNetworkAccessManager m_manager;
};
