#include "Platform/Desktop/MainLoopClock.h"
#include "Support/VirtualClock.h"

#include <QCoreApplication>

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace {
/// Held by a task, so that a test can detect when the task releases it.
using Held = std::shared_ptr<int>;

Task<> sleepInside(Clock &clock, double seconds, Held held) {
    co_await sleep(clock, seconds);
    ++*held;
}

Task<> sleepTwice(Clock &clock, double seconds, Held held) {
    co_await sleepInside(clock, seconds, held);
    co_await sleepInside(clock, seconds, held);
}

Task<> ignoreFailures(Clock &clock, Held held) {
    try {
        co_await sleep(clock, 1);
    } catch (const std::exception &) {
        ++*held;
    }
    ++*held;
}

struct VirtualTime {
    VirtualClock clock;
    void runUntil(const std::function<bool()> &isReached) {
        while (!isReached())
            clock.advance(0.001);
    }
};

struct MainLoopTime {
    MainLoopClock clock;
    void runUntil(const std::function<bool()> &isReached) {
        while (!isReached())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
};

template <typename Time>
class ClockContract : public testing::Test {
protected:
    std::optional<Time> time { std::in_place };
    Held held = std::make_shared<int>(0);
};
} // namespace

using Clocks = testing::Types<VirtualTime, MainLoopTime>;
TYPED_TEST_SUITE(ClockContract, Clocks);

TYPED_TEST(ClockContract, RunsPostedWorkInOrderAndLater) {
    std::vector<int> seen;
    this->time->clock.post([&] { seen.push_back(1); });
    this->time->clock.post([&] { seen.push_back(2); });
    EXPECT_TRUE(seen.empty());
    this->time->runUntil([&] { return seen.size() == 2; });
    EXPECT_EQ(seen, std::vector<int>({ 1, 2 }));
}

TYPED_TEST(ClockContract, RunsCallsOnceTheirTimeHasPassed) {
    const Date start = this->time->clock.now();
    std::optional<Date> called;
    this->time->clock.callAfter(0.005, [&] { called = this->time->clock.now(); });
    EXPECT_FALSE(called);
    this->time->runUntil([&] { return called.has_value(); });
    EXPECT_GE(*called - start, 0.004);
}

TYPED_TEST(ClockContract, TakesNegativeTimesAsNone) {
    bool isCalled = false;
    this->time->clock.callAfter(-1, [&] { isCalled = true; });
    EXPECT_FALSE(isCalled);
    this->time->runUntil([&] { return isCalled; });
}

TYPED_TEST(ClockContract, ResumesASleepingTask) {
    launch(sleepTwice(this->time->clock, 0.001, this->held));
    EXPECT_EQ(*this->held, 0);
    this->time->runUntil([&] { return *this->held == 2; });
    EXPECT_EQ(this->held.use_count(), 1);
}

TYPED_TEST(ClockContract, AbandonsASleepingTaskWhenItGoes) {
    launch(sleepTwice(this->time->clock, 1000, this->held));
    EXPECT_GT(this->held.use_count(), 1);
    this->time.reset();
    EXPECT_EQ(this->held.use_count(), 1) << "the task still holds what it was given";
    EXPECT_EQ(*this->held, 0) << "the task went on";
}

TYPED_TEST(ClockContract, AbandonmentIsNoFailureThatATaskDealsWith) {
    launch(ignoreFailures(this->time->clock, this->held));
    this->time.reset();
    EXPECT_EQ(this->held.use_count(), 1);
    EXPECT_EQ(*this->held, 0);
}

TYPED_TEST(ClockContract, ForgetsWorkWhenItGoes) {
    const auto work = [held = this->held] { ++*held; };
    this->time->clock.post(work);
    this->time->clock.callAfter(0, work);
    this->time.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(this->held.use_count(), 2);
    EXPECT_EQ(*this->held, 0);
}

namespace {
/// A wait that a test ends.
struct ManualWait {
    std::optional<Resumption> &resumption;

    class Awaiter : public AbandonableAwaiter {
    public:
        explicit Awaiter(std::optional<Resumption> &slot)
            : m_slot(slot) { }
        void await_suspend(std::coroutine_handle<> waiting) { m_slot = resumption(waiting); }

    private:
        std::optional<Resumption> &m_slot;
    };
    Awaiter operator co_await() const { return Awaiter(resumption); }
};

Task<> waitManually(std::optional<Resumption> &resumption, Held held) {
    co_await ManualWait { resumption };
    ++*held;
}
} // namespace

TEST(Resumption, ResumesOnceWhicheverCopyIsUsed) {
    const Held held = std::make_shared<int>(0);
    std::optional<Resumption> first;
    launch(waitManually(first, held));
    const Resumption second = *first;
    (*first)();
    EXPECT_EQ(*held, 1);
    second();
    first.reset();
    EXPECT_EQ(*held, 1);
    EXPECT_EQ(held.use_count(), 1);
}

TEST(Resumption, OnlyTheLastUnusedCopyAbandons) {
    const Held held = std::make_shared<int>(0);
    std::optional<Resumption> first;
    launch(waitManually(first, held));
    std::optional<Resumption> second = first;
    first.reset();
    EXPECT_EQ(held.use_count(), 2);
    second.reset();
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(*held, 0);
}
