#include "platform/MainQueue.h"

#include "platform/GlobalQueue.h"
#include "support/Waiting.h"

#include <QCoreApplication>
#include <QThread>
#include <gtest/gtest.h>

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

} // namespace
