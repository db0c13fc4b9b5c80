#pragma once

#include "Platform/HttpClient.h"

class LocalListeners;

/// Sends requests through another client, but refuses servers on this machine that another user may be
/// running: any local user can listen on a free port. Main thread only.
class GuardedHttpClient final : public HttpClient {
public:
    /// Both must outlive this.
    GuardedHttpClient(HttpClient &client, const LocalListeners &listeners);

    /// Also throws HttpError, before sending anything, if another user's program or nothing listens.
    Task<HttpResponse> send(HttpRequest request) override;
    Task<HttpResponse> download(HttpRequest request, HttpProgress progress) override;

private:
    void check(const QUrl &url) const;

    HttpClient &m_client;
    const LocalListeners &m_listeners;
};
