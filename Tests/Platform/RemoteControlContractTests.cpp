#include "Support/FakeRemoteControl.h"
#include "Support/RemoteControlContract.h"

namespace {

struct InMemory {
    FakeRemoteControl fake;

    RemoteControl &control() { return fake; }
    std::optional<RemoteRefusal> ask(RemoteCommand command) const {
        return fake.commands->run({ command, QStringLiteral("program") });
    }
    QStringList states() const { return fake.announcements; }
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, RemoteControlContract, InMemory);
