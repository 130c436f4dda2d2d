#include "daemon/TokenBucket.h"

#include <gtest/gtest.h>

namespace
{

using velq::daemon::TokenBucket;
using namespace std::chrono_literals;

int taken(TokenBucket &bucket, TokenBucket::Clock::time_point now)
{
    int count = 0;
    while (count < 1000 && bucket.take(now))
        ++count;
    return count;
}

TEST(TokenBucketTest, GivesABurstThenSoManyASecond)
{
    TokenBucket bucket(60, 20);
    const auto start = TokenBucket::Clock::now();
    EXPECT_EQ(taken(bucket, start), 60);
    EXPECT_EQ(taken(bucket, start + 49ms), 0);
    EXPECT_EQ(taken(bucket, start + 51ms), 1);
    EXPECT_EQ(taken(bucket, start + 1051ms), 20);
}

TEST(TokenBucketTest, NeverHoldsMoreThanABurst)
{
    TokenBucket bucket(3, 20);
    const auto start = TokenBucket::Clock::now();
    EXPECT_EQ(taken(bucket, start), 3);
    EXPECT_EQ(taken(bucket, start + 24h), 3);
}

} // namespace
