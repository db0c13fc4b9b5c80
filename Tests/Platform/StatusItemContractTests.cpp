#include "Support/FakeStatusItem.h"
#include "Support/StatusItemContract.h"

namespace {

struct InMemory {
    FakeStatusItem fake;

    StatusItem &item() { return fake; }
    void press() { fake.activate(); }
};

} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, StatusItemContract, InMemory);
