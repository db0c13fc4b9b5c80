#include "Platform/Desktop/QtHttpClient.h"
#include "Support/AwaitTask.h"
#include "Support/ClockSpy.h"
#include "Support/MisbehavingServer.h"
#include "Support/UntilTrue.h"
#include "TolmiCore/OllamaRefiner.h"

#include <gtest/gtest.h>

namespace {
using Server = MisbehavingServer;

class OllamaRefinerServer : public testing::Test {
protected:
    OllamaRefinerServer() {
        OllamaConfiguration configuration;
        configuration.endpoint = m_server.url();
        m_refiner = std::make_unique<OllamaRefiner>(m_client, configuration);
    }
    void begin() { launch(follow(m_refiner->refine(QStringLiteral("the text")), m_outcome)); }
    void beginAndReachTheServer() {
        begin();
        ASSERT_TRUE(untilTrue([this] { return !m_server.requests.empty(); }));
    }
    void perform() {
        begin();
        ASSERT_TRUE(untilTrue([this] { return m_outcome.hasEnded(); }));
    }
    QString description() const {
        return m_outcome.error ? localizedDescription(m_outcome.error) : m_outcome.value.value_or(QString());
    }

    Server m_server;
    ClockSpy m_clock;
    QtHttpClient m_client { m_clock };
    std::unique_ptr<OllamaRefiner> m_refiner;
    TaskOutcome<QString> m_outcome;
};

struct ServerCase {
    const char *name;
    std::vector<Server::Step> steps;
    /// The refined text, or the description of the error.
    const char *expected;
};

class OllamaRefinerTable : public OllamaRefinerServer, public testing::WithParamInterface<ServerCase> { };

const char *const goodBody = R"({"model":"llama3.2:3b","response":" Hello. ","done":true})";
const char *const unparsable = "Text refinement failed: Could not parse Ollama response";
const char *const connectionLost = "Text refiner unavailable: The connection to the server was lost.";

std::vector<Server::Step> answer(int status, const QByteArray &body, const QByteArray &headers = {}) {
    return { Server::send(Server::answer(status, body, headers)) };
}

INSTANTIATE_TEST_SUITE_P(Answers, OllamaRefinerTable,
    testing::Values(ServerCase { "Good", answer(200, goodBody), "Hello." },
        ServerCase { "Blank", answer(200, R"({"response":" \n"})"), "the text" },
        ServerCase {
            "Status500", answer(500, goodBody), "Text refiner unavailable: Ollama returned status 500" },
        ServerCase {
            "Status201", answer(201, goodBody), "Text refiner unavailable: Ollama returned status 201" },
        ServerCase { "Status404", answer(404, R"({"error":"model not found"})"),
            "Text refiner unavailable: Ollama returned status 404" },
        ServerCase { "NotJson", answer(200, "<html></html>"), unparsable },
        ServerCase { "Array", answer(200, R"(["response"])"), unparsable },
        ServerCase { "Number", answer(200, R"({"response":5})"), unparsable },
        ServerCase { "NoBody", answer(200, ""), unparsable },
        ServerCase { "LengthTooShort",
            { Server::send("HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n" + QByteArray(goodBody)) },
            unparsable },
        ServerCase { "LengthTooLong",
            { Server::send("HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n" + QByteArray(goodBody)),
                Server::close() },
            connectionLost },
        ServerCase { "ClosedAtOnce", { Server::close() }, connectionLost },
        ServerCase { "Reset", { Server::reset() }, connectionLost },
        ServerCase { "ResetInTheAnswer",
            { Server::send("HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n{"), Server::reset() },
            connectionLost },
        ServerCase { "NotHttp", { Server::send("hello\r\n\r\n"), Server::close() }, connectionLost },
        ServerCase { "RedirectToAnotherOrigin",
            answer(307, "", "Location: http://127.0.0.1:1/api/generate\r\n"),
            "Text refiner unavailable: Ollama returned status 307" }),
    [](const auto &info) { return info.param.name; });

TEST_P(OllamaRefinerTable, ReturnsTheResultOfOneRequest) {
    m_server.script = { GetParam().steps };
    perform();
    EXPECT_EQ(description(), QString::fromUtf8(GetParam().expected));
    EXPECT_EQ(m_server.requests.size(), 1u);
    EXPECT_TRUE(m_server.requests.at(0).startsWith("POST /api/generate HTTP/1.1\r\n"));
}

TEST_F(OllamaRefinerServer, FollowsASameOriginRedirectWithTheWholeRequest) {
    m_server.script = { answer(307, "", "Location: /ollama/api/generate\r\n"), answer(200, goodBody) };
    perform();
    EXPECT_EQ(description(), QStringLiteral("Hello."));
    ASSERT_EQ(m_server.requests.size(), 2u);
    EXPECT_TRUE(m_server.requests.at(1).startsWith("POST /ollama/api/generate HTTP/1.1\r\n"));
    EXPECT_TRUE(m_server.requests.at(1).contains(R"("prompt":"the text")"));
}

TEST_F(OllamaRefinerServer, FailsWhenNobodyListens) {
    m_server.refuseConnections();
    perform();
    EXPECT_EQ(
        description(), QStringLiteral("Text refiner unavailable: The server does not accept connections."));
}

TEST_F(OllamaRefinerServer, FailsForAnAddressThatIsNotHttp) {
    OllamaConfiguration configuration;
    configuration.endpoint = QUrl(QStringLiteral("localhost:11434"));
    m_refiner = std::make_unique<OllamaRefiner>(m_client, configuration);
    perform();
    EXPECT_EQ(description(), QStringLiteral("Text refiner unavailable: The address is not an HTTP address."));
}

TEST_F(OllamaRefinerServer, TimesOutAfterTenIdleSeconds) {
    m_server.script = { {} };
    beginAndReachTheServer();
    m_clock.advance(9.99);
    EXPECT_FALSE(m_outcome.hasEnded());
    m_clock.advance(0.01);
    EXPECT_EQ(description(), QStringLiteral("Text refinement timed out."));
}

TEST_F(OllamaRefinerServer, TimesOutAfterTwelveSecondsInTotal) {
    m_server.script = { { Server::send("HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n") } };
    beginAndReachTheServer();
    for (int second = 0; second < 11; ++second) {
        const int lookCount = m_clock.lookCount();
        m_server.sendNow(" ");
        ASSERT_TRUE(untilTrue([&] { return m_clock.lookCount() > lookCount; }));
        m_clock.advance(1);
    }
    m_clock.advance(0.99);
    EXPECT_FALSE(m_outcome.hasEnded());
    m_clock.advance(0.01);
    EXPECT_EQ(description(), QStringLiteral("Text refinement timed out."));
}

TEST_F(OllamaRefinerServer, DropsAnEndlessAnswer) {
    m_server.script = { { Server::send("HTTP/1.1 200 OK\r\n\r\n"), m_server.stream(1024 * 1024 * 1024) } };
    perform();
    EXPECT_EQ(description(), QString::fromUtf8(unparsable));
    // Data in the system's buffers counts as sent.
    EXPECT_LT(m_server.streamedByteCount, 128 * 1024 * 1024);
}
} // namespace
