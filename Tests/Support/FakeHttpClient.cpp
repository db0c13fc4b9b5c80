#include "Support/FakeHttpClient.h"

#include <gtest/gtest.h>

Task<HttpResponse> FakeHttpClient::send(HttpRequest request) {
    requests.push_back(std::move(request));
    if (replies.empty()) {
        ADD_FAILURE() << "an HTTP request without a reply in the queue";
        throw HttpError(HttpError::Code::Unknown);
    }
    const auto reply = std::move(replies.front());
    replies.pop_front();
    if (const auto *error = std::get_if<HttpError>(&reply))
        throw *error;
    co_return std::get<HttpResponse>(reply);
}

Task<HttpResponse> FakeHttpClient::download(HttpRequest request, HttpProgress progress) {
    HttpResponse response = co_await send(std::move(request));
    if (response.body && !progress(response.body->size()))
        response.body.reset();
    co_return response;
}
