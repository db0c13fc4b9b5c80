#include "TolmiCore/GuardedHttpClient.h"

#include "Support/AwaitTask.h"
#include "Support/FakeHttpClient.h"
#include "Support/FakeLocalListeners.h"

#include <gtest/gtest.h>

namespace {
struct GuardCase {
    const char *name;
    Listener listener;
    /// Absent when the request goes through.
    std::optional<HttpError::Code> error;
};

class GuardedHttpClientTest : public testing::TestWithParam<GuardCase> {
protected:
    void expectOutcome(Task<HttpResponse> (*ask)(HttpClient &, HttpRequest)) {
        FakeHttpClient client;
        FakeLocalListeners listeners;
        client.replies = { HttpResponse { 200, QByteArray("text") } };
        listeners.replies = { GetParam().listener };
        GuardedHttpClient guarded(client, listeners);
        HttpRequest request;
        request.url = QUrl(QStringLiteral("http://localhost:1/api"));
        TaskOutcome<HttpResponse> outcome;
        launch(follow(ask(guarded, request), outcome));
        EXPECT_EQ(listeners.asked, std::vector<QUrl> { request.url });
        if (GetParam().error) {
            EXPECT_TRUE(client.requests.empty());
            EXPECT_EQ(localizedDescription(outcome.error), HttpError(*GetParam().error).errorDescription());
        } else {
            EXPECT_EQ(client.requests, std::vector<HttpRequest> { request });
            EXPECT_EQ(outcome.value->statusCode, 200);
        }
    }
};

INSTANTIATE_TEST_SUITE_P(Listeners, GuardedHttpClientTest,
    testing::Values(GuardCase { "Elsewhere", Listener::Elsewhere, std::nullopt },
        GuardCase { "Trusted", Listener::Trusted, std::nullopt },
        GuardCase { "Nobody", Listener::Nobody, HttpError::Code::CannotConnect },
        GuardCase { "Untrusted", Listener::Untrusted, HttpError::Code::UntrustedServer }),
    [](const auto &info) { return info.param.name; });

TEST_P(GuardedHttpClientTest, SendsNothingToUntrustedListeners) {
    expectOutcome([](HttpClient &client, HttpRequest request) { return client.send(std::move(request)); });
}

TEST_P(GuardedHttpClientTest, DownloadsNothingFromUntrustedListeners) {
    expectOutcome([](HttpClient &client, HttpRequest request) {
        return client.download(std::move(request), [](qint64) { return true; });
    });
}
} // namespace
