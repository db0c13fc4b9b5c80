#pragma once

#include "Platform/HttpClient.h"

class LocalListeners;

/// Asks servers through another client, but on this machine only those that another user cannot have put
/// there: at a port of one's own machine whoever came first listens. Main thread only.
class GuardedHttpClient final : public HttpClient {
public:
    /// Both outlive this.
    GuardedHttpClient(HttpClient &client, const LocalListeners &listeners);

    /// Also throws HttpError when somebody else listens, or nobody, without having sent anything.
    Task<HttpResponse> send(HttpRequest request) override;
    Task<HttpResponse> download(HttpRequest request, HttpProgress progress) override;

private:
    void check(const QUrl &url) const;

    HttpClient &m_client;
    const LocalListeners &m_listeners;
};
