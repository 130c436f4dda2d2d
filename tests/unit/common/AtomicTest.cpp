#include "common/Atomic.h"

#include <gtest/gtest.h>

#include <string>
#include <thread>

namespace
{

TEST(AtomicTest, HoldsWhatWasStoredLast)
{
    velq::Atomic<std::string> value("a");
    value.store("b");
    EXPECT_EQ(value.load(), "b");
}

TEST(AtomicTest, ReadersNeverSeeHalfAValue)
{
    const std::string a(1000, 'a');
    const std::string b(1000, 'b');
    velq::Atomic<std::string> value(a);
    std::thread writer([&] {
        for (int i = 0; i < 1000; ++i)
            value.store(i % 2 == 0 ? b : a);
    });
    for (int i = 0; i < 1000; ++i) {
        const std::string seen = value.load();
        EXPECT_TRUE(seen == a || seen == b);
    }
    writer.join();
}

} // namespace
