#include "Foundation/QueuedWork.h"

#include "Foundation/Error.h"
#include "Foundation/Task.h"
#include "Platform/Desktop/MainLoopClock.h"
#include "Support/AwaitTask.h"
#include "Support/VirtualClock.h"

#include <QCoreApplication>
#include <QThread>

#include <gtest/gtest.h>

#include <thread>

namespace {
void turnMainLoop() {
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

struct Threads {
    QThread *ofWork = nullptr;
    QThread *after = nullptr;
};

Task<Threads> threadsOf(SerialQueue &queue, Clock &clock) {
    Threads threads;
    threads.ofWork = co_await runOn(queue, clock, [] { return QThread::currentThread(); });
    threads.after = QThread::currentThread();
    co_return threads;
}

Task<QString> failOn(SerialQueue &queue, Clock &clock) {
    co_return co_await runOn(queue, clock, []() -> QString { throw SystemError(QStringLiteral("failed")); });
}

Task<int> appendOn(SerialQueue &queue, Clock &clock, std::vector<int> &list, int number) {
    co_await runOn(queue, clock, [&list, number] { list.push_back(number); });
    co_return number;
}

TEST(QueuedWork, RunsOnTheQueueAndResumesOnTheMainThread) {
    MainLoopClock clock;
    SerialQueue queue(QStringLiteral("test"));
    const Threads threads = awaitTask(threadsOf(queue, clock), turnMainLoop);
    EXPECT_NE(threads.ofWork, QThread::currentThread());
    EXPECT_EQ(threads.after, QThread::currentThread());
}

TEST(QueuedWork, PropagatesExceptions) {
    MainLoopClock clock;
    SerialQueue queue(QStringLiteral("test"));
    EXPECT_THROW(awaitTask(failOn(queue, clock), turnMainLoop), SystemError);
}

Task<> holdDuringWork(SerialQueue &queue, Clock &clock, std::shared_ptr<int> held) {
    co_await runOn(queue, clock, [] {});
    ++*held;
}

TEST(QueuedWork, ADestroyedClockAbandonsTheTask) {
    const auto held = std::make_shared<int>(0);
    {
        VirtualClock clock;
        SerialQueue queue(QStringLiteral("test"));
        launch(holdDuringWork(queue, clock, held));
        EXPECT_EQ(held.use_count(), 2);
    }
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_EQ(*held, 0);
}

TEST(QueuedWork, KeepsQueueOrderAndResumesOnlyInTheLoop) {
    VirtualClock clock;
    std::vector<int> list;
    TaskOutcome<int> first;
    TaskOutcome<int> second;
    SerialQueue queue(QStringLiteral("test"));
    launch(follow(appendOn(queue, clock, list, 1), first));
    launch(follow(appendOn(queue, clock, list, 2), second));
    queue.sync([] {});
    EXPECT_EQ(list, (std::vector { 1, 2 }));
    EXPECT_FALSE(first.hasEnded());
    EXPECT_FALSE(second.hasEnded());
    clock.runPosted();
    EXPECT_EQ(first.value, 1);
    EXPECT_EQ(second.value, 2);
}
} // namespace
