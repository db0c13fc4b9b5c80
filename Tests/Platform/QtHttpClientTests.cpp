#include "Platform/Desktop/QtHttpClient.h"
#include "Support/AwaitTask.h"
#include "Support/ClockSpy.h"
#include "Support/MisbehavingServer.h"
#include "Support/UntilTrue.h"

#include <QNetworkProxy>

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <utility>

namespace {
using Code = HttpError::Code;

class QtHttpClientTest : public testing::Test {
protected:
    HttpRequest request(const char *path = "/") const {
        HttpRequest request;
        request.url = m_server.url().resolved(QUrl(QString::fromUtf8(path)));
        request.idleTimeout = 10;
        request.totalTimeout = 12;
        return request;
    }
    void answerWith(const QByteArray &bytes) {
        m_server.script.push_back({ MisbehavingServer::send(bytes) });
    }
    /// Sends the request and waits until it has reached the server.
    void begin(const HttpRequest &request) {
        const size_t requestCount = m_server.requests.size();
        launch(follow(m_client.send(request), m_outcome));
        ASSERT_TRUE(untilTrue([&] { return m_server.requests.size() > requestCount; }));
    }
    void end() {
        ASSERT_TRUE(untilTrue([this] { return m_outcome.hasEnded(); }));
    }
    void perform(const HttpRequest &request) {
        m_outcome = {};
        launch(follow(m_client.send(request), m_outcome));
        end();
    }
    /// Sends bytes from the server and waits until the client has received some.
    void drip(const QByteArray &bytes) {
        const int lookCount = m_clock.lookCount();
        m_server.sendNow(bytes);
        ASSERT_TRUE(untilTrue([&] { return m_clock.lookCount() > lookCount; }));
    }
    std::optional<Code> errorCode() const {
        try {
            if (m_outcome.error)
                std::rethrow_exception(m_outcome.error);
        } catch (const HttpError &error) {
            return error.code();
        }
        return std::nullopt;
    }
    std::optional<int> statusCode() const {
        return m_outcome.value ? m_outcome.value->statusCode : std::nullopt;
    }

    MisbehavingServer m_server;
    ClockSpy m_clock;
    QtHttpClient m_client { m_clock };
    TaskOutcome<HttpResponse> m_outcome;
};

TEST_F(QtHttpClientTest, SendsMethodPathHeadersAndBodyAsTheyAre) {
    answerWith(MisbehavingServer::answer(200, ""));
    HttpRequest sent = request("/a%20b?c=d");
    sent.method = "POST";
    sent.headers = { { "Content-Type", "application/json" } };
    sent.body = "{\"text\":\"p\xc4\x83i\"}";
    perform(sent);
    const QByteArray received = m_server.requests.at(0);
    EXPECT_TRUE(received.startsWith("POST /a%20b?c=d HTTP/1.1\r\n")) << received.toStdString();
    EXPECT_TRUE(received.contains("\r\nContent-Type: application/json\r\n"));
    EXPECT_TRUE(received.contains("\r\nContent-Length: 15\r\n"));
    EXPECT_TRUE(received.endsWith("\r\n\r\n" + sent.body));
}

TEST_F(QtHttpClientTest, SendsALongBodyWhole) {
    answerWith(MisbehavingServer::answer(200, ""));
    HttpRequest sent = request();
    sent.method = "POST";
    sent.body = QByteArray(3'000'000, 'a') + "end";
    perform(sent);
    EXPECT_TRUE(m_server.requests.at(0).endsWith("\r\n\r\n" + sent.body));
}

TEST_F(QtHttpClientTest, SendsUserNameAndPasswordOfTheAddress) {
    answerWith(MisbehavingServer::answer(307, "", "Location: /next\r\n"));
    answerWith(MisbehavingServer::answer(401, "", "WWW-Authenticate: Basic realm=\"x\"\r\n"));
    HttpRequest sent = request();
    sent.url.setUserName(QStringLiteral("me"));
    sent.url.setPassword(QStringLiteral("p\u0103 @"));
    sent.method = "POST";
    sent.body = "words";
    perform(sent);
    EXPECT_EQ(statusCode(), 401);
    ASSERT_EQ(m_server.requests.size(), 2u);
    for (const QByteArray &received : m_server.requests)
        EXPECT_TRUE(received.contains("\r\nAuthorization: Basic bWU6cMSDIEA=\r\n")) << received.toStdString();
}

TEST_F(QtHttpClientTest, KeepsNoCookies) {
    answerWith(MisbehavingServer::answer(200, "", "Set-Cookie: name=value\r\n"));
    perform(request());
    perform(request());
    EXPECT_FALSE(m_server.requests.at(1).toLower().contains("cookie"));
}

TEST_F(QtHttpClientTest, IgnoresProxySettings) {
    answerWith(MisbehavingServer::answer(200, "direct"));
    QNetworkProxy::setApplicationProxy({ QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), 1 });
    perform(request());
    QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy);
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("direct") }));
}

TEST_F(QtHttpClientTest, DoesNotDecompressUnrequestedEncodings) {
    answerWith(MisbehavingServer::answer(200, "\x1f\x8b packed", "Content-Encoding: gzip\r\n"));
    perform(request());
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("\x1f\x8b packed") }));
}

// Time-outs

TEST_F(QtHttpClientTest, TimesOutAfterTheIdleTimeOut) {
    m_server.script = { {} };
    begin(request());
    m_clock.advance(9.99);
    EXPECT_FALSE(m_outcome.hasEnded());
    m_clock.advance(0.01);
    EXPECT_EQ(errorCode(), Code::TimedOut);
}

TEST_F(QtHttpClientTest, DataRestartsTheIdleTimeOut) {
    m_server.script = { {} };
    HttpRequest patient = request();
    patient.totalTimeout = 1000;
    begin(patient);
    m_clock.advance(9);
    drip("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\n");
    for (const char *piece : { "a", "b", "c" }) {
        m_clock.advance(9.5);
        ASSERT_FALSE(m_outcome.hasEnded()) << piece;
        drip(piece);
    }
    m_clock.advance(9.99);
    EXPECT_FALSE(m_outcome.hasEnded());
    m_clock.advance(0.01);
    EXPECT_EQ(errorCode(), Code::TimedOut);
}

TEST_F(QtHttpClientTest, TimesOutAfterTheTotalTimeOutDespiteData) {
    m_server.script = { {} };
    begin(request());
    drip("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\n");
    for (int second = 1; second < 12; ++second) {
        m_clock.advance(1);
        ASSERT_FALSE(m_outcome.hasEnded()) << second;
        drip("x");
    }
    m_clock.advance(0.99);
    EXPECT_FALSE(m_outcome.hasEnded());
    m_clock.advance(0.01);
    EXPECT_EQ(errorCode(), Code::TimedOut);
}

TEST_F(QtHttpClientTest, TheTotalTimeOutIncludesRedirects) {
    answerWith(MisbehavingServer::answer(307, "", "Location: /next\r\n"));
    m_server.script.push_back({});
    begin(request());
    ASSERT_TRUE(untilTrue([this] { return m_server.requests.size() == 2; }));
    m_clock.advance(10);
    EXPECT_EQ(errorCode(), Code::TimedOut);
}

TEST_F(QtHttpClientTest, AcceptsAnyNumberAsATimeOut) {
    answerWith(MisbehavingServer::answer(200, "in time"));
    HttpRequest endless = request();
    endless.idleTimeout = endless.totalTimeout = std::numeric_limits<double>::infinity();
    perform(endless);
    EXPECT_EQ(statusCode(), 200);
}

TEST_F(QtHttpClientTest, HasNoTimeOutAfterTheResponse) {
    answerWith(MisbehavingServer::answer(200, "in time"));
    perform(request());
    m_clock.advance(100);
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("in time") }));
}

// Redirects

struct RedirectCase {
    int status;
    const char *method;
    const char *expectedMethod;
};

class Redirect : public QtHttpClientTest, public testing::WithParamInterface<RedirectCase> { };

INSTANTIATE_TEST_SUITE_P(Statuses, Redirect,
    testing::Values(RedirectCase { 301, "POST", "GET" }, RedirectCase { 302, "POST", "GET" },
        RedirectCase { 303, "POST", "GET" }, RedirectCase { 307, "POST", "POST" },
        RedirectCase { 308, "POST", "POST" }, RedirectCase { 301, "GET", "GET" },
        RedirectCase { 308, "GET", "GET" }));

TEST_P(Redirect, IsFollowedWithinTheOrigin) {
    answerWith(MisbehavingServer::answer(GetParam().status, "moved", "Location: /new/place?x=1\r\n"));
    answerWith(MisbehavingServer::answer(200, "here"));
    HttpRequest sent = request("/old");
    sent.method = GetParam().method;
    if (sent.method == "POST") {
        sent.headers = { { "Content-Type", "text/plain" }, { "X-Other", "kept" } };
        sent.body = "words";
    }
    perform(sent);
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("here") }));
    const QByteArray second = m_server.requests.at(1);
    const QByteArray expectedMethod = GetParam().expectedMethod;
    EXPECT_TRUE(second.startsWith(expectedMethod + " /new/place?x=1 ")) << second.toStdString();
    EXPECT_EQ(second.contains("Content-Type"), expectedMethod == "POST");
    EXPECT_EQ(second.endsWith("words"), expectedMethod == "POST");
    EXPECT_EQ(second.contains("X-Other: kept"), sent.method == "POST");
}

TEST_P(Redirect, IsNotFollowedToAnotherOrigin) {
    MisbehavingServer other;
    const QByteArray location = "Location: " + other.url().toEncoded() + "/steal\r\n";
    answerWith(MisbehavingServer::answer(GetParam().status, "moved", location));
    HttpRequest sent = request();
    sent.method = GetParam().method;
    if (sent.method == "POST")
        sent.body = "words";
    perform(sent);
    EXPECT_EQ(m_outcome.value, (HttpResponse { GetParam().status, QByteArray("moved") }));
    EXPECT_TRUE(other.requests.empty());
}

TEST_F(QtHttpClientTest, ComparesOriginsByComponent) {
    const QByteArray port = QByteArray::number(m_server.url().port());
    for (const QByteArray &location : { "https://127.0.0.1:" + port, "http://localhost:" + port,
             QByteArray("http://127.0.0.1"), QByteArray("file:///etc/passwd"), QByteArray("http://"),
             QByteArray("data:text/plain,x"), QByteArray("//127.0.0.2:") + port }) {
        m_server.requests.clear();
        m_server.script = { { MisbehavingServer::send(
            MisbehavingServer::answer(302, "", "Location: " + location + "\r\n")) } };
        perform(request());
        EXPECT_EQ(statusCode(), 302) << location.toStdString();
        EXPECT_EQ(m_server.requests.size(), 1u) << location.toStdString();
    }
}

TEST_F(QtHttpClientTest, ARedirectWithoutATargetIsTheResponse) {
    answerWith(MisbehavingServer::answer(302, "where?"));
    perform(request());
    EXPECT_EQ(m_outcome.value, (HttpResponse { 302, QByteArray("where?") }));
}

TEST_F(QtHttpClientTest, StopsARedirectLoop) {
    answerWith(MisbehavingServer::answer(307, "", "Location: /\r\n"));
    perform(request());
    EXPECT_EQ(errorCode(), Code::TooManyRedirects);
    EXPECT_EQ(m_server.requests.size(), 17u);
}

// Broken answers

struct FailureCase {
    const char *name;
    std::vector<MisbehavingServer::Step> steps;
    Code expected;
};

class Failure : public QtHttpClientTest, public testing::WithParamInterface<FailureCase> { };

const QByteArray halfAnswer = "HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nhalf";

INSTANTIATE_TEST_SUITE_P(Answers, Failure,
    testing::Values(FailureCase { "ClosedAtOnce", { MisbehavingServer::close() }, Code::ConnectionLost },
        FailureCase { "ResetAtOnce", { MisbehavingServer::reset() }, Code::ConnectionLost },
        FailureCase { "HalfAHead",
            { MisbehavingServer::send("HTTP/1.1 200 OK\r\nContent-"), MisbehavingServer::close() },
            Code::ConnectionLost },
        FailureCase { "HalfABody", { MisbehavingServer::send(halfAnswer), MisbehavingServer::close() },
            Code::ConnectionLost },
        FailureCase { "ResetInTheBody", { MisbehavingServer::send(halfAnswer), MisbehavingServer::reset() },
            Code::ConnectionLost },
        FailureCase { "HalfABodyOfAnError",
            { MisbehavingServer::send("HTTP/1.1 500 Oh\r\nContent-Length: 100\r\n\r\nhalf"),
                MisbehavingServer::close() },
            Code::ConnectionLost },
        FailureCase { "HalfAChunk",
            { MisbehavingServer::send("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n8\r\nhalf"),
                MisbehavingServer::close() },
            Code::ConnectionLost },
        FailureCase { "NotHttp", { MisbehavingServer::send("220 mail.example.org ESMTP\r\n\r\n") },
            Code::ConnectionLost }),
    [](const auto &info) { return info.param.name; });

TEST_P(Failure, IsAnErrorAndNotRetried) {
    m_server.script = { GetParam().steps };
    HttpRequest sent = request();
    sent.method = "POST";
    sent.body = "words";
    perform(sent);
    EXPECT_FALSE(m_outcome.value);
    EXPECT_EQ(errorCode(), GetParam().expected);
    EXPECT_EQ(m_server.requests.size(), 1u);
}

struct WholeAnswerCase {
    const char *name;
    const char *answer;
};

class WholeAnswer : public QtHttpClientTest, public testing::WithParamInterface<WholeAnswerCase> { };

INSTANTIATE_TEST_SUITE_P(Answers, WholeAnswer,
    testing::Values(
        WholeAnswerCase { "WithItsLength", "HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\nall of it" },
        WholeAnswerCase { "InChunks",
            "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n7\r\nall of \r\n2\r\nit\r\n0\r\n\r\n" },
        WholeAnswerCase { "ToTheEndOfTheConnection", "HTTP/1.1 200 OK\r\n\r\nall of it" }),
    [](const auto &info) { return info.param.name; });

TEST_P(WholeAnswer, IsAcceptedAlthoughTheConnectionCloses) {
    m_server.script = { { MisbehavingServer::send(GetParam().answer), MisbehavingServer::close() } };
    HttpRequest sent = request();
    sent.method = "POST";
    sent.body = "words";
    perform(sent);
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("all of it") }));
    EXPECT_EQ(m_server.requests.size(), 1u);
}

TEST_F(QtHttpClientTest, ReadsNoMoreThanTheContentLength) {
    answerWith("HTTP/1.1 200 OK\r\nContent-Length: 4\r\n\r\nbody and more");
    perform(request());
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("body") }));
}

TEST_F(QtHttpClientTest, ReadsABodyWithoutLengthToTheEndOfTheConnection) {
    m_server.script
        = { { MisbehavingServer::send("HTTP/1.1 200 OK\r\n\r\nall of it"), MisbehavingServer::close() } };
    perform(request());
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("all of it") }));
}

TEST_F(QtHttpClientTest, ReadsChunks) {
    answerWith("HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\none\r\n4\r\n two\r\n0\r\n\r\n");
    perform(request());
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("one two") }));
}

TEST_F(QtHttpClientTest, SpeaksHttpOnly) {
    for (const char *address : { "", "localhost:11434", "file:///etc/passwd", "data:text/plain,x",
             "ftp://127.0.0.1/x", "http:", "http:///path", "/path", "http://127.0.0.1:port" }) {
        HttpRequest sent;
        sent.url = QUrl(QString::fromUtf8(address));
        perform(sent);
        EXPECT_EQ(errorCode(), Code::UnsupportedURL) << address;
    }
}

TEST_F(QtHttpClientTest, AcceptsABodyOfTheMaximumSize) {
    const qint64 size = HttpRequest::usualMaximumBodySize;
    m_server.script = { { MisbehavingServer::send("HTTP/1.1 200 OK\r\n\r\n"), m_server.stream(size) } };
    perform(request());
    ASSERT_EQ(statusCode(), 200);
    ASSERT_TRUE(m_outcome.value->body);
    EXPECT_EQ(m_outcome.value->body->size(), size);
}

TEST_F(QtHttpClientTest, ReportsProgress) {
    m_server.script = { { MisbehavingServer::send("HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nab") } };
    std::vector<qint64> sizes;
    const HttpProgress progress = [&](qint64 size) {
        sizes.push_back(size);
        return true;
    };
    launch(follow(m_client.download(request(), progress), m_outcome));
    ASSERT_TRUE(untilTrue([&] { return !sizes.empty() && sizes.back() == 2; }));
    drip("cde");
    end();
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("abcde") }));
    EXPECT_TRUE(std::is_sorted(sizes.begin(), sizes.end()));
    EXPECT_EQ(sizes.back(), 5);
}

struct LongAnswer {
    const char *name;
    QByteArray head;
};

class ReadAhead : public QtHttpClientTest, public testing::WithParamInterface<LongAnswer> {
protected:
    /// Reads four mebibytes of the answer and returns the size of the largest piece.
    qint64 largestPieceOf(const HttpRequest &sent) {
        qint64 received = 0;
        qint64 largestPiece = 0;
        const auto progress = [&](qint64 receivedSoFar) {
            largestPiece = std::max(largestPiece, receivedSoFar - std::exchange(received, receivedSoFar));
            return received < 4 * mebibyte;
        };
        m_outcome = {};
        launch(follow(m_client.download(sent, progress), m_outcome));
        end();
        EXPECT_GE(received, 4 * mebibyte);
        return largestPiece;
    }

    static constexpr qint64 mebibyte = qint64(1024) * 1024;
};

INSTANTIATE_TEST_SUITE_P(Answers, ReadAhead,
    testing::Values(LongAnswer { "WithoutLength", "HTTP/1.1 200 OK\r\n\r\n" },
        LongAnswer { "WithLength", "HTTP/1.1 200 OK\r\nContent-Length: 67108864\r\n\r\n" }),
    [](const auto &info) { return info.param.name; });

TEST_P(ReadAhead, IsLimitedWhateverIsSent) {
    m_server.script = { { MisbehavingServer::send(GetParam().head), m_server.stream(64 * mebibyte) } };
    HttpRequest sent = request();
    EXPECT_LE(largestPieceOf(sent), 64 * 1024) << "without a body";
    sent.method = "POST";
    sent.body = "{}";
    EXPECT_LE(largestPieceOf(sent), 64 * 1024) << "with a body";
}

TEST_F(QtHttpClientTest, DiscardsTheBodyWhenCancelled) {
    m_server.script = { { MisbehavingServer::send("HTTP/1.1 200 OK\r\n\r\n"), m_server.stream(1LL << 40) } };
    const HttpProgress progress = [](qint64 size) { return size < 100000; };
    launch(follow(m_client.download(request(), progress), m_outcome));
    end();
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, std::nullopt }));
}

TEST_F(QtHttpClientTest, AcceptsABodyOfTheRequestsMaximumSize) {
    HttpRequest small = request();
    small.maximumBodySize = 3;
    answerWith(MisbehavingServer::answer(200, "abc"));
    answerWith(MisbehavingServer::answer(200, "abcd"));
    perform(small);
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, QByteArray("abc") }));
    perform(small);
    EXPECT_EQ(m_outcome.value, (HttpResponse { 200, std::nullopt }));
    HttpRequest large = request();
    large.maximumBodySize = 2 * HttpRequest::usualMaximumBodySize;
    m_server.script.push_back(
        { MisbehavingServer::send("HTTP/1.1 200 OK\r\n\r\n"), m_server.stream(large.maximumBodySize) });
    perform(large);
    ASSERT_TRUE(m_outcome.value->body);
    EXPECT_EQ(m_outcome.value->body->size(), large.maximumBodySize);
}

TEST_F(QtHttpClientTest, DiscardsALongerBodyAndClosesTheConnection) {
    for (const char *head :
        { "HTTP/1.1 200 OK\r\n\r\n", "HTTP/1.1 200 OK\r\nContent-Length: 1073741824\r\n\r\n" }) {
        m_server.streamedByteCount = 0;
        m_server.script = { { MisbehavingServer::send(head), m_server.stream(1024 * 1024 * 1024) } };
        perform(request());
        EXPECT_EQ(m_outcome.value, (HttpResponse { 200, std::nullopt }));
        // Data in the system's buffers counts as sent.
        EXPECT_LT(m_server.streamedByteCount, 128 * 1024 * 1024);
    }
}

TEST_F(QtHttpClientTest, ReturnsTheStatusOfADiscardedBody) {
    m_server.script = { { MisbehavingServer::send("HTTP/1.1 500 Oh\r\n\r\n"), m_server.stream(1 << 30) } };
    perform(request());
    EXPECT_EQ(m_outcome.value, (HttpResponse { 500, std::nullopt }));
}

TEST_F(QtHttpClientTest, SendsRequestsConcurrently) {
    m_server.script = { {}, { MisbehavingServer::send(MisbehavingServer::answer(200, "second")) } };
    begin(request("/first"));
    TaskOutcome<HttpResponse> second;
    launch(follow(m_client.send(request("/second")), second));
    ASSERT_TRUE(untilTrue([&] { return second.hasEnded(); }));
    EXPECT_EQ(second.value->body, "second");
    EXPECT_FALSE(m_outcome.hasEnded());
    m_clock.advance(10);
    EXPECT_EQ(errorCode(), Code::TimedOut);
}
} // namespace
