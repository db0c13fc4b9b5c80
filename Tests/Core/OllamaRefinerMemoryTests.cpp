#include "Platform/Desktop/QtHttpClient.h"
#include "Support/AwaitTask.h"
#include "Support/MisbehavingServer.h"
#include "Support/ResidentMemory.h"
#include "Support/UntilTrue.h"
#include "Support/VirtualClock.h"
#include "TolmiCore/OllamaRefiner.h"

#include <gtest/gtest.h>

namespace {
constexpr qint64 mebibyte = 1024 * 1024;

struct HostileAnswer {
    const char *name;
    QByteArray head;
};

class OllamaRefinerMemory : public testing::TestWithParam<HostileAnswer> {
protected:
    OllamaRefinerMemory() { m_configuration.endpoint = m_server.url(); }
    QString refine() {
        OllamaRefiner refiner(m_client, m_configuration);
        TaskOutcome<QString> outcome;
        launch(follow(refiner.refine(QStringLiteral("the text")), outcome));
        EXPECT_TRUE(untilTrue([&] { return outcome.hasEnded(); }));
        return outcome.error ? localizedDescription(outcome.error) : *outcome.value;
    }

    MisbehavingServer m_server;
    VirtualClock m_clock;
    QtHttpClient m_client { m_clock };
    OllamaConfiguration m_configuration;
};

INSTANTIATE_TEST_SUITE_P(Answers, OllamaRefinerMemory,
    testing::Values(HostileAnswer { "WithoutLength", "HTTP/1.1 200 OK\r\n\r\n" },
        HostileAnswer { "WithLength", "HTTP/1.1 200 OK\r\nContent-Length: 1073741824\r\n\r\n" }),
    [](const auto &info) { return info.param.name; });

TEST_P(OllamaRefinerMemory, StaysBoundedForAGibibyteAnswer) {
    // The first request includes allocations that the network classes keep.
    m_server.script = { { MisbehavingServer::send(MisbehavingServer::answer(200, R"({"response":"a"})")) } };
    EXPECT_EQ(refine(), QStringLiteral("a"));
    m_server.script = { { MisbehavingServer::send(GetParam().head), m_server.stream(1024 * mebibyte) } };
    const qint64 atRest = residentMemory();
    resetPeakResidentMemory();
    const QString result = refine();
    const qint64 rise = peakResidentMemory() - atRest;
    EXPECT_TRUE(result.startsWith(QStringLiteral("Text refine"))) << result.toStdString();
    RecordProperty("rise", std::to_string(rise));
    EXPECT_LE(rise, 32 * mebibyte) << m_server.streamedByteCount;
}
} // namespace
