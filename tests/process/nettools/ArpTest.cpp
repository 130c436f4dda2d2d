#include "process/nettools/Golden.h"
#include "process/nettools/NameServer.h"
#include "process/nettools/ToolRun.h"
#include "support/NetworkNamespace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <unistd.h>

namespace
{

using testing::SizeIs;
using velq::testing::expectGolden;
using velq::testing::ip;
using velq::testing::runNettool;

class ArpTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        ip(R"(-batch - <<'END'
link add lan0 index 10 type veth peer name far0 index 11
link add br0 index 12 type bridge mcast_snooping 0
link set lan0 up
link set br0 up
neigh add 192.168.7.10 lladdr aa:bb:cc:0d:0e:0f nud reachable dev lan0
neigh add 192.168.7.1 lladdr 00:0b:cc:0d:0e:10 nud stale dev lan0
neigh add 192.168.7.11 lladdr aa:bb:cc:0d:0e:11 nud permanent dev lan0
neigh add 192.168.7.12 nud failed dev lan0
neigh add 192.168.7.255 lladdr ff:ff:ff:ff:ff:ff nud noarp dev lan0
neigh add 224.0.0.251 lladdr 01:00:5e:00:00:fb nud noarp dev lan0
neigh add 192.168.7.10 lladdr aa:bb:cc:0d:0e:10 nud reachable dev br0
neigh add proxy 192.168.7.30 dev lan0
END)");
    }
};

TEST_F(ArpTest, ShowsNeighboursInNumbers)
{
    expectGolden("hosts", runNettool("arp", {"-an"}));
}

TEST_F(ArpTest, OptionsComeTogetherOrAlone)
{
    const std::string table = runNettool("arp", {"-an"}).output;
    EXPECT_EQ(runNettool("arp", {"-na"}).output, table);
    EXPECT_EQ(runNettool("arp", {"-n", "-a"}).output, table);
}

TEST_F(ArpTest, HostsHaveTheirNames)
{
    const std::string refused =
        velq::testing::usePrivateNames("192.168.7.1 router.lan router\n192.168.7.12 printer\n");
    if (!refused.empty()) {
        ASSERT_EQ(getenv("CI"), nullptr) << refused;
        GTEST_SKIP() << refused;
    }
    expectGolden("hosts-with-names", runNettool("arp", {"-a"}));
}

TEST_F(ArpTest, ADeadNameServerIsAskedOnce)
{
    const std::string refused = velq::testing::usePrivateNames("");
    if (!refused.empty()) {
        ASSERT_EQ(getenv("CI"), nullptr) << refused;
        GTEST_SKIP() << refused;
    }
    const std::string inNumbers = runNettool("arp", {"-an"}).output;
    velq::testing::BrokenNameServer server;
    EXPECT_EQ(runNettool("arp", {"-a"}).output, inNumbers);
    EXPECT_THAT(server.questions(), SizeIs(1));
}

TEST(ArpCall, WhatItCannotDoIsMisuse)
{
    expectGolden("arp-without-options", runNettool("arp", {}));
    expectGolden("arp-unexpected-argument", runNettool("arp", {"-an", "en0"}));
}

} // namespace
