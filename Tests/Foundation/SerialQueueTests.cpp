#include "Foundation/SerialQueue.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <future>
#include <stdexcept>
#include <thread>
#include <vector>

#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

namespace {
TEST(SerialQueue, RunsWorkInOrder) {
    std::vector<int> order;
    {
        SerialQueue queue(QStringLiteral("test"));
        for (int index = 0; index < 100; ++index)
            queue.async([&order, index] { order.push_back(index); });
    }
    ASSERT_EQ(order.size(), 100U);
    for (int index = 0; index < 100; ++index)
        EXPECT_EQ(order[size_t(index)], index);
}

TEST(SerialQueue, RunsOnePieceAtATime) {
    int unguarded = 0;
    {
        SerialQueue queue(QStringLiteral("test"));
        std::vector<std::thread> callers;
        for (int caller = 0; caller < 4; ++caller) {
            callers.emplace_back([&queue, &unguarded] {
                for (int index = 0; index < 250; ++index)
                    queue.async([&unguarded] { ++unguarded; });
            });
        }
        for (std::thread &caller : callers)
            caller.join();
    }
    EXPECT_EQ(unguarded, 1000);
}

TEST(SerialQueue, AsyncDoesNotWait) {
    std::promise<void> gate;
    SerialQueue queue(QStringLiteral("test"));
    queue.async([&gate] { gate.get_future().wait(); });
    gate.set_value();
}

TEST(SerialQueue, SyncWaitsForQueuedWork) {
    SerialQueue queue(QStringLiteral("test"));
    int value = 0;
    queue.async([&value] { value = 1; });
    queue.sync([&value] { value = value * 10 + 2; });
    EXPECT_EQ(value, 12);
}

TEST(SerialQueue, SyncRethrowsExceptionsAndContinues) {
    SerialQueue queue(QStringLiteral("test"));
    EXPECT_THROW(queue.sync([] { throw std::runtime_error("failed"); }), std::runtime_error);
    bool hasRun = false;
    queue.sync([&hasRun] { hasRun = true; });
    EXPECT_TRUE(hasRun);
}

TEST(SerialQueue, HasOneNamedThread) {
    SerialQueue queue(QStringLiteral("Tolmi.SerialQueueTests"));
    std::vector<std::thread::id> threads;
    std::array<char, 16> name {};
    queue.sync([&threads] { threads.push_back(std::this_thread::get_id()); });
    queue.sync([&] {
        threads.push_back(std::this_thread::get_id());
        ::pthread_getname_np(::pthread_self(), name.data(), name.size());
    });
    EXPECT_EQ(threads[0], threads[1]);
    EXPECT_NE(threads[0], std::this_thread::get_id());
    EXPECT_STREQ(name.data(), "Tolmi.SerialQue");
}

TEST(SerialQueue, UtilityLeavesTheProcessorToOthers) {
    const auto niceness = [](SerialQueue &queue) {
        int result = 0;
        queue.sync([&result] { result = ::getpriority(PRIO_PROCESS, id_t(::gettid())); });
        return result;
    };
    const int own = ::getpriority(PRIO_PROCESS, id_t(::gettid()));
    SerialQueue usual(QStringLiteral("test"));
    SerialQueue utility(QStringLiteral("test"), SerialQueue::QualityOfService::Utility);
    EXPECT_EQ(niceness(utility), std::min(own + 10, 19));
    EXPECT_EQ(niceness(usual), own);
}

TEST(SerialQueue, UnusedOneEnds) {
    const SerialQueue queue(QStringLiteral("test"));
}

TEST(SerialQueue, WorkMayQueueMoreWork) {
    std::promise<int> done;
    SerialQueue queue(QStringLiteral("test"));
    queue.async([&] { queue.async([&] { done.set_value(7); }); });
    EXPECT_EQ(done.get_future().get(), 7);
}
} // namespace
