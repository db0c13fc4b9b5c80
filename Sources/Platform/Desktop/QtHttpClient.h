#pragma once

#include "Platform/Clock.h"
#include "Platform/HttpClient.h"

#include <QNetworkAccessManager>

/// Speaks to servers directly: no proxy, no cookies, no cache, no compression, nothing kept between requests.
class QtHttpClient final : public HttpClient {
public:
    /// A longer body is given up.
    static constexpr qint64 maximumBodySize = qint64(16) * 1024 * 1024;

    /// `clock` drives both time-outs and must outlive the client.
    explicit QtHttpClient(Clock &clock);

    Task<HttpResponse> send(HttpRequest request) override;

private:
    Clock &m_clock;
    QNetworkAccessManager m_manager;
};
