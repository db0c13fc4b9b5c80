#include "Platform/Desktop/QtHttpClient.h"
#include "Support/AwaitTask.h"
#include "Support/FakeHttpClient.h"
#include "Support/MisbehavingServer.h"
#include "Support/UntilTrue.h"
#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

#include <array>

namespace {
/// An implementation under test, and how to control the server's behaviour.
class Web {
public:
    virtual ~Web() = default;
    virtual HttpClient &client() = 0;
    virtual QUrl url() const = 0;
    virtual void answerWith(int status, const QByteArray &body) = 0;
    virtual void refuse() = 0;
    virtual void stayAway() = 0;
    /// Lets the client's time-out pass.
    virtual void letTimePass() = 0;
    virtual size_t requestCount() const = 0;
};

class FakeWeb final : public Web {
public:
    HttpClient &client() override { return m_client; }
    QUrl url() const override { return QUrl(QStringLiteral("http://example.org")); }
    void answerWith(int status, const QByteArray &body) override {
        m_client.replies.push_back(HttpResponse { status, body });
    }
    void refuse() override { m_client.replies.push_back(HttpError(HttpError::Code::CannotConnect)); }
    void stayAway() override { m_client.replies.push_back(HttpError(HttpError::Code::TimedOut)); }
    void letTimePass() override { }
    size_t requestCount() const override { return m_client.requests.size(); }

private:
    FakeHttpClient m_client;
};

class RealWeb final : public Web {
public:
    HttpClient &client() override { return m_client; }
    QUrl url() const override { return m_server.url(); }
    void answerWith(int status, const QByteArray &body) override {
        m_server.script.push_back({ MisbehavingServer::send(MisbehavingServer::answer(status, body)) });
    }
    void refuse() override { m_server.refuseConnections(); }
    void stayAway() override { m_server.script.push_back({}); }
    void letTimePass() override { m_clock.advance(62); }
    size_t requestCount() const override { return m_server.requests.size(); }

private:
    MisbehavingServer m_server;
    VirtualClock m_clock;
    QtHttpClient m_client { m_clock };
};

using MakeWeb = std::unique_ptr<Web> (*)();

template <typename Kind>
std::unique_ptr<Web> make() {
    return std::make_unique<Kind>();
}

class HttpClientContract : public testing::TestWithParam<MakeWeb> {
protected:
    HttpRequest request() const {
        HttpRequest request;
        request.url = m_web->url();
        return request;
    }
    void send(const HttpRequest &request) {
        m_outcome = {};
        launch(follow(m_web->client().send(request), m_outcome));
    }
    void sendAndWait(const HttpRequest &request) {
        send(request);
        ASSERT_TRUE(untilTrue([this] { return m_outcome.hasEnded(); }));
    }
    void expectError(HttpError::Code code) const {
        ASSERT_TRUE(m_outcome.error);
        try {
            std::rethrow_exception(m_outcome.error);
        } catch (const HttpError &error) {
            EXPECT_EQ(error.code(), code);
        }
    }

    std::unique_ptr<Web> m_web = GetParam()();
    TaskOutcome<HttpResponse> m_outcome;
};

INSTANTIATE_TEST_SUITE_P(Kinds, HttpClientContract, testing::Values(&make<FakeWeb>, &make<RealWeb>),
    [](const auto &info) { return info.index == 0 ? "Fake" : "Qt"; });

TEST_P(HttpClientContract, ReturnsStatusAndBody) {
    m_web->answerWith(200, "hello");
    sendAndWait(request());
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("hello") }));
}

TEST_P(HttpClientContract, AcceptsEveryStatus) {
    constexpr std::array statuses { 201, 204, 304, 400, 401, 403, 404, 405, 407, 409, 418, 429, 500, 501, 503,
        599 };
    for (const int status : statuses)
        m_web->answerWith(status, status == 204 || status == 304 ? "" : "why");
    for (const int status : statuses) {
        sendAndWait(request());
        ASSERT_TRUE(m_outcome.value) << status;
        EXPECT_EQ(m_outcome.value->statusCode, status);
    }
}

TEST_P(HttpClientContract, AnswersRequestsInTheirOrderOneAtATime) {
    m_web->answerWith(200, "first");
    m_web->answerWith(200, "second");
    sendAndWait(request());
    EXPECT_EQ(m_outcome.value->body, "first");
    sendAndWait(request());
    EXPECT_EQ(m_outcome.value->body, "second");
    EXPECT_EQ(m_web->requestCount(), 2u);
}

TEST_P(HttpClientContract, ReportsDownloadProgress) {
    m_web->answerWith(200, "hello");
    qint64 received = 0;
    const HttpProgress progress = [&](qint64 size) {
        received = size;
        return true;
    };
    launch(follow(m_web->client().download(request(), progress), m_outcome));
    ASSERT_TRUE(untilTrue([this] { return m_outcome.hasEnded(); }));
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("hello") }));
    EXPECT_EQ(received, 5);
}

TEST_P(HttpClientContract, ReturnsNoBodyOfACancelledDownload) {
    m_web->answerWith(200, "hello");
    const HttpProgress progress = [](qint64) { return false; };
    launch(follow(m_web->client().download(request(), progress), m_outcome));
    ASSERT_TRUE(untilTrue([this] { return m_outcome.hasEnded(); }));
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, std::nullopt }));
}

TEST_P(HttpClientContract, ThrowsWhenNobodyListens) {
    m_web->refuse();
    sendAndWait(request());
    expectError(HttpError::Code::CannotConnect);
}

TEST_P(HttpClientContract, DistinguishesATimeOutFromOtherFailures) {
    m_web->stayAway();
    send(request());
    ASSERT_TRUE(untilTrue([this] { return m_web->requestCount() > 0; }));
    m_web->letTimePass();
    ASSERT_TRUE(m_outcome.hasEnded());
    expectError(HttpError::Code::TimedOut);
}
} // namespace
