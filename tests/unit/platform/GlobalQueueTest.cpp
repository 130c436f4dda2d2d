#include "platform/GlobalQueue.h"
#include "support/Waiting.h"

#include <QThread>
#include <gtest/gtest.h>

#include <atomic>
#include <condition_variable>
#include <mutex>

namespace
{

using velq::GlobalQueue;
using velq::testing::waitUntil;

TEST(GlobalQueueTest, RunsOnAnotherThread)
{
    std::atomic<QThread *> ranOn = nullptr;
    GlobalQueue::async([&] { ranOn = QThread::currentThread(); });
    ASSERT_TRUE(waitUntil([&] { return ranOn != nullptr; }));
    EXPECT_NE(ranOn, QThread::currentThread());
}

// More tasks that wait for one another than there are cores: none may wait for a thread.
TEST(GlobalQueueTest, TasksThatWaitDoNotKeepOthersFromStarting)
{
    constexpr int tasks = 32;
    std::mutex mutex;
    std::condition_variable allHere;
    int here = 0;
    std::atomic<int> done = 0;
    for (int i = 0; i < tasks; ++i) {
        GlobalQueue::async([&] {
            std::unique_lock lock(mutex);
            ++here;
            allHere.notify_all();
            allHere.wait(lock, [&] { return here == tasks; });
            ++done;
        });
    }
    EXPECT_TRUE(waitUntil([&] { return done == tasks; }));
    EXPECT_TRUE(waitUntil([] { return GlobalQueue::isIdle(); }));
}

TEST(GlobalQueueTest, IsNotIdleWhileATaskRuns)
{
    std::atomic<bool> go = false;
    GlobalQueue::async([&] { go.wait(false); });
    EXPECT_FALSE(GlobalQueue::isIdle());
    go = true;
    go.notify_all();
    EXPECT_TRUE(waitUntil([] { return GlobalQueue::isIdle(); }));
}

} // namespace
