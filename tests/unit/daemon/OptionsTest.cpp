#include "daemon/Options.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

using velq::daemon::BadOptions;
using velq::daemon::Options;
using namespace std::chrono_literals;

Options parsed(std::vector<std::string> words)
{
    std::vector<char *> pointers;
    pointers.reserve(words.size());
    for (std::string &word : words)
        pointers.push_back(word.data());
    return velq::daemon::optionsFrom(pointers);
}

TEST(DaemonOptionsTest, WithoutWordsTheContractHolds)
{
    const Options options = parsed({});
    EXPECT_EQ(options.idle, 30s);
    EXPECT_EQ(options.limit, 60s);
    EXPECT_FALSE(options.help);
}

TEST(DaemonOptionsTest, TakesSecondsAndParts)
{
    const Options options = parsed({"--idle", "0.25", "--limit", "7"});
    EXPECT_EQ(options.idle, 250ms);
    EXPECT_EQ(options.limit, 7s);
    EXPECT_TRUE(parsed({"--help"}).help);
}

TEST(DaemonOptionsTest, EverythingElseIsRefused)
{
    for (const char *word : {"", "0", "-1", "1s", " 1", "1 ", "nan", "inf", "1e3", "0x10", "86401",
                             "0.0001", "99999999999999999999"})
        EXPECT_THROW(parsed({"--idle", word}), BadOptions) << word;
    EXPECT_THROW(parsed({"--limit"}), BadOptions);
    EXPECT_THROW(parsed({"--idle=3"}), BadOptions);
    EXPECT_THROW(parsed({"--unknown"}), BadOptions);
    EXPECT_THROW(parsed({"word"}), BadOptions);
}

} // namespace
