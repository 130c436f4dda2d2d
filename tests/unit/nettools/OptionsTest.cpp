#include "nettools/lib/Options.h"

#include <gtest/gtest.h>

#include <vector>

namespace
{

using namespace velq::nettools;

Options options(const std::vector<std::string_view> &arguments)
{
    return readOptions(arguments, "nr");
}

TEST(Options, LettersComeTogetherOrAlone)
{
    for (const auto &arguments : {std::vector<std::string_view>{"-nr"}, {"-rn"}, {"-n", "-r"}}) {
        const Options read = options(arguments);
        EXPECT_TRUE(read.complaint.empty());
        EXPECT_TRUE(read.has('n'));
        EXPECT_TRUE(read.has('r'));
    }
}

TEST(Options, NoneAreFine)
{
    EXPECT_TRUE(options({}).complaint.empty());
    EXPECT_FALSE(options({}).has('n'));
}

TEST(Options, AnythingElseIsComplainedAbout)
{
    EXPECT_EQ(options({"-nx"}).complaint, "unknown option '-nx'");
    EXPECT_EQ(options({"--numeric"}).complaint, "unknown option '--numeric'");
    EXPECT_EQ(options({"-n", "en0"}).complaint, "unexpected argument 'en0'");
    EXPECT_EQ(options({"-"}).complaint, "unexpected argument '-'");
    EXPECT_EQ(options({""}).complaint, "unexpected argument ''");
}

} // namespace
