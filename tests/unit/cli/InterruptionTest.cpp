#include "cli/Interruption.h"

#include <csignal>
#include <gtest/gtest.h>

namespace
{

using velq::cli::Interruption;

TEST(InterruptionTest, EndsACommandThatSaysNothingOfIt)
{
    Interruption interruption;
    EXPECT_FALSE(interruption.isLeftTo(SIGINT));
    EXPECT_EQ(interruption.signal(), 0);
}

TEST(InterruptionTest, AsksACommandOnce)
{
    int asked = 0;
    Interruption interruption;
    const Interruption::Scope scope(interruption, [&] { return ++asked > 0; });
    EXPECT_TRUE(interruption.isLeftTo(SIGTERM));
    EXPECT_FALSE(interruption.isLeftTo(SIGINT));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(interruption.signal(), SIGTERM);
}

TEST(InterruptionTest, EndsACommandThatHasNothingToWaitFor)
{
    Interruption interruption;
    const Interruption::Scope scope(interruption, [] { return false; });
    EXPECT_FALSE(interruption.isLeftTo(SIGINT));
    EXPECT_EQ(interruption.signal(), 0);
}

TEST(InterruptionTest, TheInnerScopeGoesBeforeTheOuterOneAndGivesItBack)
{
    Interruption interruption;
    const Interruption::Scope outer(interruption, [] { return true; });
    {
        const Interruption::Scope inner(interruption, [] { return false; });
        EXPECT_FALSE(interruption.isLeftTo(SIGINT));
    }
    EXPECT_TRUE(interruption.isLeftTo(SIGINT));
}

TEST(InterruptionTest, AScopeThatIsOverIsNotAsked)
{
    Interruption interruption;
    {
        const Interruption::Scope scope(interruption, [] { return true; });
    }
    EXPECT_FALSE(interruption.isLeftTo(SIGINT));
}

TEST(InterruptionTest, ToolsLiveThroughCtrlCInAScopeOnly)
{
    const auto isIgnored = [] {
        struct sigaction action = {};
        return sigaction(SIGINT, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
    };
    Interruption interruption;
    {
        const Interruption::Scope outer(interruption, [] { return true; });
        {
            const Interruption::Scope inner(interruption, [] { return false; });
        }
        EXPECT_TRUE(isIgnored());
    }
    EXPECT_FALSE(isIgnored());
}

} // namespace
