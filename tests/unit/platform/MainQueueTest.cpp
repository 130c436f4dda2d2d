#include "platform/MainQueue.h"

#include "platform/GlobalQueue.h"
#include "support/Waiting.h"

#include <QCoreApplication>
#include <QThread>
#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

namespace
{

using velq::GlobalQueue;
using velq::MainQueue;
using velq::testing::waitUntil;

TEST(MainQueueTest, RunsLaterOnTheMainThreadInOrder)
{
    QList<int> ran;
    QThread *thread = nullptr;
    GlobalQueue::async([&] {
        for (int i = 0; i < 3; ++i) {
            MainQueue::async([&, i] {
                ran.append(i);
                thread = QThread::currentThread();
            });
        }
    });
    ASSERT_TRUE(waitUntil([&] { return ran.size() == 3; }));
    EXPECT_EQ(ran, (QList<int>{0, 1, 2}));
    EXPECT_EQ(thread, QCoreApplication::instance()->thread());
}

// The runner, and with it the queues, may first be used by a scanner's own thread.
TEST(MainQueueTest, RunsOnTheMainThreadWhoeverUsesItFirst)
{
    QThread *thread = nullptr;
    std::thread([&] { MainQueue::async([&] { thread = QThread::currentThread(); }); }).join();
    ASSERT_TRUE(waitUntil([&] { return thread != nullptr; }));
    EXPECT_EQ(thread, QCoreApplication::instance()->thread());
}

TEST(MainQueueTest, NeverRunsBeforeTheCallReturns)
{
    bool ran = false;
    MainQueue::async([&] { ran = true; });
    EXPECT_FALSE(ran);
    EXPECT_TRUE(waitUntil([&] { return ran; }));
}

TEST(MainQueueTest, ASynchronousTaskIsDoneWhenTheCallReturns)
{
    QThread *thread = nullptr;
    auto waiting = std::async(std::launch::async, [&] {
        MainQueue::sync([&] { thread = QThread::currentThread(); });
        return thread;
    });
    EXPECT_TRUE(waitUntil(
        [&] { return waiting.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    EXPECT_EQ(waiting.get(), QCoreApplication::instance()->thread());
}

TEST(MainQueueTest, OnTheMainThreadASynchronousTaskRunsAtOnce)
{
    bool earlier = false;
    MainQueue::async([&] { earlier = true; });
    bool ran = false;
    MainQueue::sync([&] { ran = true; });
    EXPECT_TRUE(ran);
    EXPECT_FALSE(earlier);
    EXPECT_TRUE(waitUntil([&] { return earlier; }));
}

TEST(MainQueueTest, WhatASynchronousTaskThrowsReachesTheCaller)
{
    auto waiting = std::async(std::launch::async,
                              [] { MainQueue::sync([] { throw std::runtime_error("no"); }); });
    EXPECT_TRUE(waitUntil(
        [&] { return waiting.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
    EXPECT_THROW(waiting.get(), std::runtime_error);
}

} // namespace
