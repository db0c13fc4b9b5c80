#pragma once

#include "Platform/HttpClient.h"

#include <deque>
#include <variant>

/// Answers from a queue.
class FakeHttpClient final : public HttpClient {
public:
    Task<HttpResponse> send(HttpRequest request) override;

    /// What was asked, in order.
    std::vector<HttpRequest> requests;
    /// What the next requests get.
    std::deque<std::variant<HttpResponse, HttpError>> replies;
};
