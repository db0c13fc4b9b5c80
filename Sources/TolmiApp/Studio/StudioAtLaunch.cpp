#include "TolmiApp/Studio/StudioAtLaunch.h"

#include "Foundation/Clock.h"
#include "Platform/LoginSession.h"

namespace {
constexpr double secondsToAnswer = 0.5;
constexpr double secondsForALatePanel = 10;
/// How old a session is when all of its desktop has been started.
constexpr double secondsOfStarting = 60;

bool isStarting(const LoginSession &session) {
    const std::optional<double> age = session.age();
    return age && *age < secondsOfStarting;
}
} // namespace

Task<> openIfOutOfReach(
    Clock &clock, const LoginSession &session, std::function<bool()> isInReach, std::function<void()> open) {
    co_await sleep(clock, secondsToAnswer);
    if (!isInReach() && isStarting(session))
        co_await sleep(clock, secondsForALatePanel);
    if (!isInReach())
        open();
}
