#include "TolmiApp/Health/StudioHealthCheckService.h"

#include "Platform/Desktop/QtHttpClient.h"
#include "Support/AwaitTask.h"
#include "Support/ClockSpy.h"
#include "Support/MisbehavingServer.h"
#include "Support/UntilTrue.h"

#include <gtest/gtest.h>

namespace {
using Server = MisbehavingServer;

/// The probe with a real server.
class OllamaProbeServer : public testing::Test {
protected:
    void begin(double timeout = 3) {
        launch(follow(
            StudioHealthCheckService::defaultOllamaProbe(m_client, m_server.url(), timeout), m_outcome));
    }
    bool perform() {
        begin();
        EXPECT_TRUE(untilTrue([this] { return m_outcome.hasEnded(); }));
        return m_outcome.value.value_or(false);
    }

    Server m_server;
    ClockSpy m_clock;
    QtHttpClient m_client { m_clock };
    TaskOutcome<bool> m_outcome;
};

struct ServerCase {
    const char *name;
    std::vector<Server::Step> steps;
    bool isReachable;
};

class OllamaProbeServerTable : public OllamaProbeServer, public testing::WithParamInterface<ServerCase> { };

std::vector<Server::Step> answer(int status, const QByteArray &body, const QByteArray &headers = {}) {
    return { Server::send(Server::answer(status, body, headers)) };
}

INSTANTIATE_TEST_SUITE_P(Answers, OllamaProbeServerTable,
    testing::Values(ServerCase { "Models", answer(200, R"({"models":[]})"), true },
        ServerCase { "NotJson", answer(200, "<html></html>"), true },
        ServerCase {
            "NoContent", { Server::send("HTTP/1.1 204 No Content\r\n\r\n"), Server::close() }, true },
        ServerCase { "NotFound", answer(404, "{}"), false },
        ServerCase { "Broken", answer(500, "{}"), false },
        ServerCase {
            "RedirectToAnotherOrigin", answer(307, "", "Location: http://127.0.0.1:1/api/tags\r\n"), false },
        ServerCase { "ClosedAtOnce", { Server::close() }, false },
        ServerCase { "Reset", { Server::reset() }, false },
        ServerCase { "ResetInTheAnswer",
            { Server::send("HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n{"), Server::reset() }, false },
        ServerCase { "NotHttp", { Server::send("hello\r\n\r\n"), Server::close() }, false }),
    [](const auto &info) { return info.param.name; });
} // namespace

TEST_P(OllamaProbeServerTable, AsksForTheModels) {
    m_server.script = { GetParam().steps };
    EXPECT_EQ(perform(), GetParam().isReachable);
    ASSERT_FALSE(m_server.requests.empty());
    EXPECT_TRUE(m_server.requests[0].startsWith("GET /api/tags HTTP/1.1\r\n"));
}

TEST_F(OllamaProbeServer, FollowsARedirectWithinTheOrigin) {
    m_server.script = { answer(301, "", "Location: /ollama/api/tags\r\n"), answer(200, "{}") };
    EXPECT_TRUE(perform());
    EXPECT_EQ(m_server.requests.size(), 2u);
}

TEST_F(OllamaProbeServer, FailsWhereNobodyListens) {
    m_server.refuseConnections();
    EXPECT_FALSE(perform());
}

TEST_F(OllamaProbeServer, RejectsAnEndlessAnswerWithAGoodStatus) {
    m_server.script = { { Server::send("HTTP/1.1 200 OK\r\n\r\n"), m_server.stream(1024 * 1024 * 1024) } };
    EXPECT_TRUE(perform());
    // Data in the system's buffers counts as sent.
    EXPECT_LT(m_server.streamedByteCount, 128 * 1024 * 1024);
}

TEST_F(OllamaProbeServer, TimesOutWhenIdle) {
    m_server.script = { {} };
    begin(3);
    ASSERT_TRUE(untilTrue([this] { return !m_server.requests.empty(); }));
    m_clock.advance(2.99);
    EXPECT_FALSE(m_outcome.hasEnded());
    m_clock.advance(0.01);
    EXPECT_EQ(m_outcome.value, false);
}
