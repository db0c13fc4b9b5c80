#pragma once

#include "Platform/HttpClient.h"

#include <deque>
#include <variant>

/// Answers from a queue.
class FakeHttpClient final : public HttpClient {
public:
    Task<HttpResponse> send(HttpRequest request) override;
    /// Tells the progress once, with the whole size.
    Task<HttpResponse> download(HttpRequest request, HttpProgress progress) override;

    /// What was asked, in order.
    std::vector<HttpRequest> requests;
    /// What the next requests get.
    std::deque<std::variant<HttpResponse, HttpError>> replies;
};
