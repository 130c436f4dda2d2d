#include "process/nettools/Golden.h"
#include "process/nettools/ToolRun.h"
#include "support/NetworkNamespace.h"

#include <gtest/gtest.h>

namespace
{

using velq::testing::expectGolden;
using velq::testing::ip;
using velq::testing::runNettool;

class RouteTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        ip(R"(-batch - <<'END'
link set lo up
link add lan0 type veth peer name far0
link add lan1 type veth peer name far1
link set lan0 up
link set far0 up
link set lan1 up
link set far1 up
addr add 192.168.7.2/24 dev lan0
addr add 192.168.8.2/24 dev lan1
END)");
    }
};

TEST_F(RouteTest, ShowsTheBestDefaultRoute)
{
    ip("route add default via 192.168.8.1 metric 600");
    ip("route add default via 192.168.7.1 metric 100 mtu 1400");
    expectGolden("route-default", runNettool("route", {"get", "default"}));
    expectGolden("route-host", runNettool("route", {"-n", "get", "203.0.113.9"}));
}

TEST_F(RouteTest, ANetworkWithIpv6AloneHasADefaultRouteToo)
{
    ip("addr add fd07::2/64 dev lan0 nodad");
    ip("route add default via fe80::1 dev lan0");
    const auto shown = runNettool("route", {"get", "default"});
    EXPECT_NE(shown.output.find("    gateway: fe80::1%lan0\n  interface: lan0\n"),
              std::string::npos)
        << shown.output;
    EXPECT_NE(runNettool("route", {"get", "2001:db8::9"}).output.find("  interface: lan0\n"),
              std::string::npos);
}

TEST_F(RouteTest, AHostOnTheLinkHasNoGateway)
{
    expectGolden("route-neighbour", runNettool("route", {"get", "192.168.7.77"}));
}

TEST_F(RouteTest, NoRouteIsAFailure)
{
    expectGolden("no-default-route", runNettool("route", {"get", "default"}));
    expectGolden("no-route", runNettool("route", {"get", "203.0.113.9"}));
}

TEST_F(RouteTest, ANameWithoutAnAddressIsAFailure)
{
    const auto failed = runNettool("route", {"get", "nowhere.invalid"});
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.errors, "route: no address is known for nowhere.invalid\n");
    EXPECT_EQ(failed.output, "");
}

TEST_F(RouteTest, ANameIsShownUnlessNumbersAreWanted)
{
    EXPECT_EQ(runNettool("route", {"get", "localhost"}).output.find("   route to: localhost\n"),
              0U);
    EXPECT_EQ(
        runNettool("route", {"-n", "get", "localhost"}).output.find("   route to: 127.0.0.1\n"),
        0U);
}

TEST_F(RouteTest, WhatItCannotDoIsMisuse)
{
    for (const std::vector<std::string> &call : std::vector<std::vector<std::string>>{
             {"get"}, {"add", "default"}, {"get", "a", "b"}, {"-x", "get", "default"}})
        EXPECT_EQ(runNettool("route", call).status, 2);
}

} // namespace
