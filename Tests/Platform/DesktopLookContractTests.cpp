#include "Support/DesktopLookContract.h"
#include "Support/FakeDesktopLook.h"

namespace {
class MadeFake {
public:
    DesktopLook &look() { return m_look; }
    void choose(std::optional<Appearance> appearance) { m_look.setAppearance(appearance); }
    void reduceMotion(bool isReduced) { m_look.setMotionReduced(isReduced); }

private:
    FakeDesktopLook m_look;
};
} // namespace

INSTANTIATE_TYPED_TEST_SUITE_P(Fake, DesktopLookContract, MadeFake);
