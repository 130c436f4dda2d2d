#include "nettools/lib/HostLine.h"
#include "unit/nettools/Sample.h"

#include <gtest/gtest.h>

#include <linux/if_arp.h>
#include <regex>
#include <sstream>

namespace
{

using namespace velq::nettools;

class HostLineSamples : public testing::TestWithParam<const char *>
{
};

INSTANTIATE_TEST_SUITE_P(PublicDocumentation, HostLineSamples,
                         testing::Values("arp-an.txt", "arp-a.txt"));

TEST_P(HostLineSamples, OurLayoutIsTheirs)
{
    const std::regex form(R"((\S+) \((\S+)\) at (\S+) on (\S+) ifscope( permanent)? \[(\S+)\])");
    std::istringstream text(velq::testing::sample(GetParam()));
    int lines = 0;
    for (std::string line; std::getline(text, line); ++lines) {
        std::smatch part;
        ASSERT_TRUE(std::regex_match(line, part, form)) << line;
        std::string ours;
        appendHostLine(ours,
                       {part[1].str(), part[2].str(), part[3].str(), part[4].str(), part[5].matched,
                        part[6].str()});
        EXPECT_EQ(ours, line + "\n");
    }
    EXPECT_GT(lines, 0);
}

TEST(HostLine, AnUnknownMediumIsNotTold)
{
    std::string line;
    appendHostLine(line, {"?", "10.0.0.1", "(incomplete)", "ib0", false, {}});
    EXPECT_EQ(line, "? (10.0.0.1) at (incomplete) on ib0 ifscope\n");
}

TEST(Medium, IsThatOfTheLink)
{
    velq::rtnetlink::Link link;
    link.hardwareType = ARPHRD_ETHER;
    EXPECT_EQ(mediumOf(link), "ethernet");
    link.kind = "veth";
    EXPECT_EQ(mediumOf(link), "ethernet");
    link.kind = "bridge";
    EXPECT_EQ(mediumOf(link), "bridge");
    link.kind = "vlan";
    EXPECT_EQ(mediumOf(link), "vlan");
    link = {};
    link.hardwareType = ARPHRD_IEEE1394;
    EXPECT_EQ(mediumOf(link), "firewire");
    link.hardwareType = ARPHRD_INFINIBAND;
    EXPECT_EQ(mediumOf(link), "");
}

} // namespace
