#include "common/RunLoopTimer.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

namespace
{

using namespace std::chrono_literals;
using velq::RunLoopTimer;
using velq::testing::settle;
using velq::testing::waitUntil;

TEST(RunLoopTimerTest, FiresAgainAndAgainWhoeverDropsIt)
{
    QObject target;
    int fired = 0;
    RunLoopTimer::scheduled(1ms, &target, [&] { ++fired; });
    EXPECT_TRUE(waitUntil([&] { return fired >= 3; }));
}

TEST(RunLoopTimerTest, InvalidatedItIsGone)
{
    QObject target;
    int fired = 0;
    const auto timer = RunLoopTimer::scheduled(1ms, &target, [&] { ++fired; });
    RunLoopTimer::invalidate(timer);
    EXPECT_FALSE(timer->isActive());
    settle();
    EXPECT_TRUE(timer.isNull());
    EXPECT_EQ(fired, 0);
    RunLoopTimer::invalidate(timer);
    RunLoopTimer::invalidate({});
}

TEST(RunLoopTimerTest, EndsWithItsTarget)
{
    auto target = std::make_unique<QObject>();
    const auto timer = RunLoopTimer::scheduled(1ms, target.get(), [] {});
    target.reset();
    EXPECT_TRUE(timer.isNull());
}

TEST(RunLoopTimerTest, KeepsItsInterval)
{
    QObject target;
    EXPECT_EQ(RunLoopTimer::scheduled(2s, &target, [] {})->interval(), 2000);
}

} // namespace
