#include "Foundation/Task.h"

#include "Foundation/Clock.h"
#include "Foundation/Error.h"
#include "Support/VirtualClock.h"

#include <gtest/gtest.h>

namespace {
Task<> sleepTwice(Clock &clock, std::vector<Date> &wakings) {
    co_await sleep(clock, 1.5);
    wakings.push_back(clock.now());
    co_await sleep(clock, 0);
    wakings.push_back(clock.now());
}

Task<> failAfterSleep(Clock &clock) {
    co_await sleep(clock, 1);
    throw SystemError(QStringLiteral("failed"));
}

Task<> failAtOnce() {
    throw SystemError(QStringLiteral("failed at once"));
    co_return;
}

/// Collects exceptions of detached tasks, instead of the handler that fails the test.
class UnhandledErrors {
public:
    UnhandledErrors()
        : m_before(setUnhandledTaskErrorHandler(
            [this](std::exception_ptr error) { texts.append(localizedDescription(error)); })) { }
    ~UnhandledErrors() { setUnhandledTaskErrorHandler(m_before); }
    UnhandledErrors(const UnhandledErrors &) = delete;
    UnhandledErrors &operator=(const UnhandledErrors &) = delete;

    QStringList texts;

private:
    std::function<void(std::exception_ptr)> m_before;
};

TEST(Task, StartsAtOnceAndSleepsByTheClock) {
    VirtualClock clock;
    std::vector<Date> wakings;
    launch(sleepTwice(clock, wakings));
    clock.advance(1.4);
    EXPECT_TRUE(wakings.empty());
    clock.advance(0.1);
    EXPECT_EQ(wakings, (std::vector { VirtualClock::start + 1.5, VirtualClock::start + 1.5 }));
    EXPECT_EQ(clock.pendingCallCount(), 0U);
}

TEST(Task, AnUnhandledExceptionReachesTheHandler) {
    VirtualClock clock;
    UnhandledErrors errors;
    launch(failAtOnce());
    EXPECT_EQ(errors.texts, QStringList { QStringLiteral("failed at once") });
    launch(failAfterSleep(clock));
    clock.advance(1);
    EXPECT_EQ(errors.texts.size(), 2);
    EXPECT_EQ(errors.texts.last(), QStringLiteral("failed"));
}

TEST(Task, WithoutAHandlerAnExceptionIsOnlyLogged) {
    UnhandledErrors errors;
    setUnhandledTaskErrorHandler({});
    testing::internal::CaptureStderr();
    launch(failAtOnce());
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "Tolmi: a task failed: failed at once\n");
    EXPECT_TRUE(errors.texts.isEmpty());
}
} // namespace
