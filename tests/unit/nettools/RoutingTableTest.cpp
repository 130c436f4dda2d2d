#include "nettools/lib/RoutingTable.h"
#include "nettools/lib/RouteFlags.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <linux/if.h>
#include <linux/if_arp.h>
#include <linux/neighbour.h>
#include <linux/rtnetlink.h>

namespace
{

using namespace velq::nettools;
using velq::rtnetlink::Address;
using velq::rtnetlink::Neighbour;
using velq::rtnetlink::Route;

constexpr uint32_t loopbackIndex = 1;
constexpr uint32_t lan = 2;
constexpr uint32_t tunnel = 3;

Address address(const std::string &text)
{
    Address result;
    result.family = text.find(':') == std::string::npos ? AF_INET : AF_INET6;
    EXPECT_EQ(inet_pton(result.family, text.c_str(), result.bytes.data()), 1) << text;
    return result;
}

class RoutingTable : public testing::Test
{
protected:
    void SetUp() override
    {
        tables.links = {
            {loopbackIndex,
             IFF_UP | IFF_LOOPBACK,
             ARPHRD_LOOPBACK,
             "lo",
             "",
             {0, 0, 0, 0, 0, 0},
             0},
            {lan, IFF_UP | IFF_BROADCAST, ARPHRD_ETHER, "lan0", "", {2, 0, 0, 0, 0, 1}, 0},
            {tunnel, IFF_UP | IFF_POINTOPOINT | IFF_NOARP, ARPHRD_NONE, "tun0", "tun", {}, 0},
        };
    }

    Route &addRoute(const char *destination, uint8_t prefixLength, uint32_t link,
                    const char *gateway = nullptr)
    {
        Route &route = tables.routes.emplace_back();
        route.family = AF_INET;
        route.type = RTN_UNICAST;
        route.table = RT_TABLE_MAIN;
        route.protocol = RTPROT_STATIC;
        route.prefixLength = prefixLength;
        if (destination != nullptr)
            route.destination = address(destination);
        if (route.destination.isSet())
            route.family = route.destination.family;
        route.nextHops.push_back({link, 0, gateway != nullptr ? address(gateway) : Address()});
        return route;
    }

    Neighbour &addNeighbour(const char *host, uint16_t state, std::vector<uint8_t> hardware)
    {
        Neighbour &neighbour = tables.neighbours.emplace_back();
        neighbour.address = address(host);
        neighbour.family = neighbour.address.family;
        neighbour.interface = lan;
        neighbour.state = state;
        neighbour.hardwareAddress = std::move(hardware);
        return neighbour;
    }

    RouteRow onlyRow(uint8_t family = AF_INET) const
    {
        const auto rows = routingTable(tables, family);
        EXPECT_EQ(rows.size(), 1u);
        return rows.empty() ? RouteRow() : rows.front();
    }

    std::vector<std::string> letters(uint8_t family = AF_INET) const
    {
        std::vector<std::string> all;
        for (const RouteRow &row : routingTable(tables, family))
            all.push_back(flagLetters(row.flags));
        return all;
    }

    const std::vector<uint8_t> someone = {0xaa, 0xbb, 0xcc, 0x0d, 0x0e, 0x0f};
    KernelTables tables;
};

using Letters = std::vector<std::string>;

TEST_F(RoutingTable, TheWinningDefaultRouteStandsFirst)
{
    addRoute(nullptr, 0, lan, "192.168.1.9").priority = 600;
    addRoute(nullptr, 0, lan, "192.168.1.1").priority = 100;
    const auto rows = routingTable(tables, AF_INET);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].gateway, "192.168.1.1");
    EXPECT_EQ(letters(), (Letters{"UGScg", "UGScIg"}));
}

TEST_F(RoutingTable, AGatewayMakesHostsAndNetworksDiffer)
{
    addRoute("10.8.0.0", 24, lan, "192.168.1.1");
    addRoute("192.168.9.9", 32, lan, "192.168.1.1");
    EXPECT_EQ(letters(), (Letters{"UGSc", "UGHS"}));
}

TEST_F(RoutingTable, OnlyLocalNetworksCarryTheMarkOfExpiry)
{
    addRoute("10.0.0.0", 8, lan);
    addRoute("11.0.0.0", 8, tunnel);
    const auto rows = routingTable(tables, AF_INET);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].gateway, "link#2");
    EXPECT_EQ(rows[0].secondsLeft, 0);
    EXPECT_EQ(rows[1].gateway, "link#3");
    EXPECT_EQ(rows[1].secondsLeft, std::nullopt);
    EXPECT_EQ(letters(), (Letters{"UCS", "UCS"}));
}

TEST_F(RoutingTable, AnOwnAddressIsANetworkOfOneHost)
{
    Route &route = addRoute("192.168.1.5", 32, lan);
    route.type = RTN_LOCAL;
    route.table = RT_TABLE_LOCAL;
    const RouteRow row = onlyRow();
    EXPECT_FALSE(row.isHost);
    EXPECT_EQ(row.gateway, "link#2");
    EXPECT_EQ(flagLetters(row.flags), "UCS");
}

TEST_F(RoutingTable, AnOwnIpv6AddressLeadsThroughTheLoopback)
{
    Route &route = addRoute("fe80::5", 128, lan);
    route.type = RTN_LOCAL;
    route.protocol = RTPROT_KERNEL;
    const RouteRow row = onlyRow(AF_INET6);
    EXPECT_TRUE(row.isHost);
    EXPECT_EQ(row.gateway, "2:0:0:0:0:1");
    EXPECT_EQ(row.interfaceName, "lo");
    EXPECT_EQ(flagLetters(row.flags), "UHLI");
}

TEST_F(RoutingTable, TheLoopbackLeadsToItself)
{
    addRoute("127.0.0.0", 8, loopbackIndex).type = RTN_LOCAL;
    addRoute("127.0.0.1", 32, loopbackIndex).type = RTN_LOCAL;
    addRoute("127.255.255.255", 32, loopbackIndex).type = RTN_BROADCAST;
    const auto rows = routingTable(tables, AF_INET);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].gateway, "127.0.0.1");
    EXPECT_EQ(rows[1].gateway, "127.0.0.1");
    EXPECT_EQ(letters(), (Letters{"UCS", "UH"}));
}

TEST_F(RoutingTable, TheLoopbackOfTwoTablesIsOneRow)
{
    addRoute("::1", 128, loopbackIndex).type = RTN_LOCAL;
    addRoute("::1", 128, loopbackIndex).priority = 256;
    EXPECT_EQ(letters(AF_INET6), (Letters{"UHL"}));
}

TEST_F(RoutingTable, RoutesThatGoNowhereLeadToTheLoopback)
{
    addRoute("10.66.0.0", 16, 0).type = RTN_BLACKHOLE;
    addRoute("10.67.0.1", 32, 0).type = RTN_UNREACHABLE;
    addRoute("10.68.0.0", 16, 0).type = RTN_THROW;
    const auto rows = routingTable(tables, AF_INET);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].gateway, "127.0.0.1");
    EXPECT_EQ(rows[0].interfaceName, "lo");
    EXPECT_EQ(letters(), (Letters{"UGSB", "UGHRS"}));
}

TEST_F(RoutingTable, OtherTablesAreNotShown)
{
    addRoute(nullptr, 0, lan, "192.168.1.1").table = 51820;
    EXPECT_TRUE(routingTable(tables, AF_INET).empty());
}

TEST_F(RoutingTable, WhoSetARouteShows)
{
    addRoute("10.1.0.0", 16, lan, "192.168.1.1").protocol = RTPROT_REDIRECT;
    addRoute("10.2.0.0", 16, lan, "192.168.1.1").protocol = RTPROT_BGP;
    addRoute("10.3.0.0", 16, lan, "192.168.1.1").protocol = RTPROT_DHCP;
    EXPECT_EQ(letters(), (Letters{"UGDc", "UG1c", "UGSc"}));
    addRoute("2001:db8::", 64, lan).protocol = RTPROT_KERNEL;
    addRoute("2001:db8:1::", 64, lan).protocol = RTPROT_STATIC;
    addRoute("fe80::", 64, lan).protocol = RTPROT_KERNEL;
    EXPECT_EQ(letters(AF_INET6), (Letters{"UC", "UCS", "UCI"}));
}

TEST_F(RoutingTable, ADeadNextHopIsNotUp)
{
    addRoute("10.0.0.0", 8, lan, "192.168.1.1").nextHops[0].flags = RTNH_F_DEAD;
    EXPECT_EQ(letters(), (Letters{"GSc"}));
}

TEST_F(RoutingTable, ARouteOverAVanishedLinkIsLeftOut)
{
    addRoute("10.0.0.0", 8, 77);
    EXPECT_TRUE(routingTable(tables, AF_INET).empty());
}

TEST_F(RoutingTable, AHostLastsTwentyMinutesAfterItWasHeard)
{
    addNeighbour("192.168.1.10", NUD_REACHABLE, someone);
    addNeighbour("192.168.1.11", NUD_STALE, someone).confirmedAgo = 500;
    addNeighbour("192.168.1.12", NUD_STALE, someone).confirmedAgo = 4000000000;
    addNeighbour("192.168.1.13", NUD_PERMANENT, someone);
    const auto rows = routingTable(tables, AF_INET);
    ASSERT_EQ(rows.size(), 4u);
    EXPECT_EQ(rows[0].gateway, "aa:bb:cc:d:e:f");
    EXPECT_EQ(rows[0].secondsLeft, 1200);
    EXPECT_EQ(rows[1].secondsLeft, 700);
    EXPECT_EQ(rows[2].secondsLeft, 0);
    EXPECT_EQ(rows[3].secondsLeft, std::nullopt);
    EXPECT_EQ(letters(), (Letters{"UHLWI", "UHLWI", "UHLWI", "UHLS"}));
}

TEST_F(RoutingTable, AHostThatDidNotAnswerLeadsToTheLink)
{
    addNeighbour("192.168.1.10", NUD_INCOMPLETE, {});
    // A host that was known before keeps its address while it is given up.
    addNeighbour("192.168.1.11", NUD_FAILED, someone);
    const auto rows = routingTable(tables, AF_INET);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].gateway, "link#2");
    EXPECT_EQ(rows[0].secondsLeft, std::nullopt);
    EXPECT_EQ(rows[1].gateway, "link#2");
    EXPECT_EQ(rows[1].secondsLeft, 0);
}

TEST_F(RoutingTable, GatewaysAreToldFromOtherHosts)
{
    addRoute(nullptr, 0, lan, "192.168.1.1");
    addRoute("10.0.0.0", 8, lan, "192.168.1.9");
    addNeighbour("192.168.1.1", NUD_REACHABLE, someone);
    addNeighbour("192.168.1.9", NUD_REACHABLE, someone);
    EXPECT_EQ(letters(), (Letters{"UGScg", "UGSc", "UHLWIir", "UHLWIi"}));
}

TEST_F(RoutingTable, GroupsAndBroadcastsAreNotHosts)
{
    addRoute("192.168.1.255", 32, lan).type = RTN_BROADCAST;
    addNeighbour("192.168.1.255", NUD_NOARP, {0xff, 0xff, 0xff, 0xff, 0xff, 0xff});
    addNeighbour("224.0.0.251", NUD_NOARP, {1, 0, 0x5e, 0, 0, 0xfb});
    const auto rows = routingTable(tables, AF_INET);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[0].gateway, "ff:ff:ff:ff:ff:ff");
    EXPECT_EQ(rows[1].gateway, "1:0:5e:0:0:fb");
    EXPECT_EQ(letters(), (Letters{"UHLWbI", "UHmLWI"}));
}

TEST_F(RoutingTable, EntriesThatNobodyAskedForAreLeftOut)
{
    addNeighbour("192.168.1.5", NUD_NOARP, {2, 0, 0, 0, 0, 1});
    addNeighbour("192.168.1.6", NUD_NOARP, {});
    addNeighbour("192.168.1.7", NUD_NONE, {});
    addNeighbour("192.168.1.8", NUD_PERMANENT, someone).flags = NTF_PROXY;
    addNeighbour("ff02::fb", NUD_NOARP, {0x33, 0x33, 0, 0, 0, 0xfb});
    EXPECT_TRUE(routingTable(tables, AF_INET).empty());
    EXPECT_TRUE(routingTable(tables, AF_INET6).empty());
}

TEST_F(RoutingTable, NetworksStandBeforeWhatLiesInThem)
{
    addNeighbour("192.168.1.0", NUD_REACHABLE, someone);
    addRoute("192.168.1.0", 32, lan).type = RTN_LOCAL;
    addRoute("192.168.1.0", 24, lan);
    addRoute("9.0.0.0", 8, lan);
    addRoute("10.0.0.0", 8, lan);
    const auto rows = routingTable(tables, AF_INET);
    ASSERT_EQ(rows.size(), 5u);
    EXPECT_EQ(rows[0].destination, address("9.0.0.0"));
    EXPECT_EQ(rows[1].destination, address("10.0.0.0"));
    EXPECT_EQ(rows[2].prefixLength, 24);
    EXPECT_EQ(rows[3].prefixLength, 32);
    EXPECT_TRUE(rows[4].isHost);
}

} // namespace
