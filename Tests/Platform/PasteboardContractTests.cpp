#include "Support/FakePasteboard.h"
#include "Support/PasteboardContract.h"

namespace {
class MadeFake {
public:
    Pasteboard &pasteboard() { return m_pasteboard; }

private:
    FakePasteboard m_pasteboard;
};
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, PasteboardContract, MadeFake);
