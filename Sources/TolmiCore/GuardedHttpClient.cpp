#include "TolmiCore/GuardedHttpClient.h"

#include "Platform/LocalListeners.h"

GuardedHttpClient::GuardedHttpClient(HttpClient &client, const LocalListeners &listeners)
    : m_client(client)
    , m_listeners(listeners) { }

Task<HttpResponse> GuardedHttpClient::send(HttpRequest request) {
    check(request.url);
    co_return co_await m_client.send(std::move(request));
}

Task<HttpResponse> GuardedHttpClient::download(HttpRequest request, HttpProgress progress) {
    check(request.url);
    co_return co_await m_client.download(std::move(request), std::move(progress));
}

void GuardedHttpClient::check(const QUrl &url) const {
    switch (m_listeners.listenerAt(url)) {
    case Listener::Elsewhere:
    case Listener::Trusted:
        return;
    case Listener::Nobody:
        // Sending anyway would let a hostile program open the port between this check and the request.
        throw HttpError(HttpError::Code::CannotConnect);
    case Listener::Untrusted:
        throw HttpError(HttpError::Code::UntrustedServer);
    }
}
