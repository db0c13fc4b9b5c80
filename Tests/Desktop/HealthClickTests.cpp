// The health checks of the real program beside an Ollama that comes and goes.

#include "Desktop/OpenStudio.h"
#include "Support/MisbehavingServer.h"

namespace {
class HealthClicks : public OpenStudio { };
} // namespace

TEST_F(HealthClicks, OllamaIsSeenComingAndGoing) {
    MisbehavingServer ollama;
    ollama.script = { { MisbehavingServer::send(MisbehavingServer::answer(200, R"({"models":[]})")),
        MisbehavingServer::close() } };
    ollama.refuseConnections();
    open({ { "tolmi.refinementEnabled", true }, { "tolmi.ollamaEndpoint", ollama.url().toString() } });
    goTo("6", "Health");
    control("list item", "Ollama: Unreachable");

    ollama.acceptConnections();
    clickButton("Run Checks Again");
    control("list item", "Ollama: Reachable");
    EXPECT_FALSE(isShown("list item", "Ollama: Unreachable"));
    EXPECT_TRUE(ollama.requests.at(0).startsWith("GET /api/tags "));

    ollama.refuseConnections();
    clickButton("Run Checks Again");
    control("list item", "Ollama: Unreachable");
}
