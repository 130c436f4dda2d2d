#include "platform/linux/rtnetlink/InterfaceAddresses.h"
#include "platform/linux/rtnetlink/Links.h"
#include "platform/linux/rtnetlink/Neighbours.h"
#include "platform/linux/rtnetlink/Routes.h"
#include "support/Addresses.h"
#include "support/NetworkNamespace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <linux/rtnetlink.h>

namespace
{

using namespace velq::rtnetlink;
using velq::testing::address;
using velq::testing::ip;

template <typename Record> struct Collected {
    std::vector<Record> records;
    Reader<Record> reader = [this](const Record &record) {
        records.push_back(record);
        return Socket::Visit::Continue;
    };
};

class RtnetlinkTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        ip("link add lan0 address 02:00:00:00:00:01 type veth peer name far0");
        ip("link set lan0 up");
        ip("link set far0 up");
        ip("addr add 192.168.7.2/24 dev lan0");
        socket = Socket::open();
        ASSERT_TRUE(socket.has_value());
    }

    std::vector<Route> routes(uint8_t type = 0)
    {
        Collected<Route> collected;
        EXPECT_TRUE(readRoutes(*socket, AF_INET, type, collected.reader));
        return collected.records;
    }

    std::optional<Socket> socket;
};

TEST_F(RtnetlinkTest, ReadsTheDefaultRoute)
{
    ip("route add default via 192.168.7.1 metric 100");
    const auto all = routes(RTN_UNICAST);
    const auto found = std::ranges::find(all, 0, &Route::prefixLength);
    ASSERT_NE(found, all.end());
    EXPECT_FALSE(found->destination.isSet());
    EXPECT_EQ(found->table, static_cast<uint32_t>(RT_TABLE_MAIN));
    EXPECT_EQ(found->priority, 100u);
    ASSERT_EQ(found->nextHops.size(), 1u);
    EXPECT_EQ(found->nextHops[0].gateway, address("192.168.7.1"));
}

TEST_F(RtnetlinkTest, ReadsDefaultRoutesAlone)
{
    ip("route add default via 192.168.7.1 metric 100");
    ip("route add default via 192.168.7.9 metric 200");
    ip("route add 10.0.0.0/8 via 192.168.7.1");
    Collected<Route> collected;
    ASSERT_TRUE(readDefaultRoutes(*socket, AF_INET, collected.reader));
    ASSERT_EQ(collected.records.size(), 2u);
    EXPECT_EQ(collected.records[0].priority, 100u);
    EXPECT_EQ(collected.records[1].priority, 200u);
}

TEST_F(RtnetlinkTest, ReadsEveryHopOfAMultipathRoute)
{
    ip("route add 10.0.0.0/8 nexthop via 192.168.7.1 nexthop via 192.168.7.9");
    const auto all = routes(RTN_UNICAST);
    const auto found = std::ranges::find(all, address("10.0.0.0"), &Route::destination);
    ASSERT_NE(found, all.end());
    ASSERT_EQ(found->nextHops.size(), 2u);
    EXPECT_EQ(found->nextHops[0].gateway, address("192.168.7.1"));
    EXPECT_EQ(found->nextHops[1].gateway, address("192.168.7.9"));
}

TEST_F(RtnetlinkTest, TheTypeFilterLeavesOutLocalRoutes)
{
    for (const Route &route : routes(RTN_UNICAST))
        EXPECT_EQ(route.type, RTN_UNICAST);
    const auto all = routes();
    EXPECT_NE(std::ranges::find(all, RTN_LOCAL, &Route::type), all.end());
}

TEST_F(RtnetlinkTest, StoppingEndsTheReadingAtOnce)
{
    int seen = 0;
    EXPECT_TRUE(readRoutes(*socket, AF_INET, 0, [&](const Route &) {
        ++seen;
        return Socket::Visit::Stop;
    }));
    EXPECT_EQ(seen, 1);
}

TEST_F(RtnetlinkTest, FindsTheRouteToANeighbourAndPastTheGateway)
{
    ip("route add default via 192.168.7.1");
    const auto near = routeTo(*socket, address("192.168.7.77"));
    ASSERT_TRUE(near.has_value());
    ASSERT_EQ(near->nextHops.size(), 1u);
    EXPECT_FALSE(near->nextHops[0].gateway.isSet());
    const auto far = routeTo(*socket, address("198.51.100.1"));
    ASSERT_TRUE(far.has_value());
    EXPECT_EQ(far->nextHops[0].gateway, address("192.168.7.1"));
}

TEST_F(RtnetlinkTest, NoRouteIsNothing)
{
    EXPECT_FALSE(routeTo(*socket, address("198.51.100.1")).has_value());
    EXPECT_FALSE(routeTo(*socket, address("2001:db8::1")).has_value());
}

TEST_F(RtnetlinkTest, ALinkCarriesOnlyWhileItsFarEndIsUp)
{
    Collected<Link> links;
    ASSERT_TRUE(readLinks(*socket, links.reader));
    const auto lan = std::ranges::find(links.records, "lan0", &Link::name);
    ASSERT_NE(lan, links.records.end());
    EXPECT_TRUE(lan->carries());
    EXPECT_EQ(lan->kind, "veth");
    EXPECT_EQ(lan->hardwareAddress, (std::vector<uint8_t>{2, 0, 0, 0, 0, 1}));
    EXPECT_TRUE(std::ranges::find(links.records, "lo", &Link::name)->isLoopback());

    ip("link set far0 down");
    const auto pulled = linkAt(*socket, lan->index);
    ASSERT_TRUE(pulled.has_value());
    EXPECT_FALSE(pulled->carries());
}

TEST_F(RtnetlinkTest, AVanishedLinkIsNothing)
{
    EXPECT_FALSE(linkAt(*socket, 4711).has_value());
}

TEST_F(RtnetlinkTest, OnlyNeighboursWithAnAnswerAreConfirmed)
{
    ip("neigh add 192.168.7.10 lladdr aa:bb:cc:dd:ee:ff nud stale dev lan0");
    ip("neigh add 192.168.7.11 nud failed dev lan0");
    Collected<Neighbour> neighbours;
    ASSERT_TRUE(readNeighbours(*socket, AF_INET, neighbours.reader));
    const auto known =
        std::ranges::find(neighbours.records, address("192.168.7.10"), &Neighbour::address);
    ASSERT_NE(known, neighbours.records.end());
    EXPECT_TRUE(known->isConfirmed());
    const auto lost =
        std::ranges::find(neighbours.records, address("192.168.7.11"), &Neighbour::address);
    ASSERT_NE(lost, neighbours.records.end());
    EXPECT_FALSE(lost->isConfirmed());
}

TEST_F(RtnetlinkTest, ARouteTellsWhoSetIt)
{
    ip("route add 10.0.0.0/8 via 192.168.7.1 proto dhcp");
    const auto all = routes(RTN_UNICAST);
    const auto set = std::ranges::find(all, address("10.0.0.0"), &Route::destination);
    ASSERT_NE(set, all.end());
    EXPECT_EQ(set->protocol, RTPROT_DHCP);
    const auto own = std::ranges::find(all, address("192.168.7.0"), &Route::destination);
    ASSERT_NE(own, all.end());
    EXPECT_EQ(own->protocol, RTPROT_KERNEL);
}

TEST_F(RtnetlinkTest, ANeighbourTellsWhenItWasHeardFrom)
{
    ip("neigh add 192.168.7.10 lladdr aa:bb:cc:dd:ee:ff nud reachable dev lan0");
    ip("neigh add 192.168.7.11 lladdr aa:bb:cc:dd:ee:01 nud stale dev lan0");
    Collected<Neighbour> neighbours;
    ASSERT_TRUE(readNeighbours(*socket, AF_INET, neighbours.reader));
    const auto heard =
        std::ranges::find(neighbours.records, address("192.168.7.10"), &Neighbour::address);
    ASSERT_NE(heard, neighbours.records.end());
    EXPECT_LT(heard->confirmedAgo, 30u);
    // An entry that starts as stale was last heard from before the time of being reachable.
    const auto old =
        std::ranges::find(neighbours.records, address("192.168.7.11"), &Neighbour::address);
    ASSERT_NE(old, neighbours.records.end());
    EXPECT_GE(old->confirmedAgo, 30u);
    EXPECT_LT(old->confirmedAgo, 3600u);
}

TEST_F(RtnetlinkTest, EventsAreDrainedAndAnOverrunIsTold)
{
    auto events = Socket::open(RTMGRP_IPV4_IFADDR);
    ASSERT_TRUE(events.has_value());
    EXPECT_EQ(events->drain(), Socket::Drained::Nothing);
    ip("addr add 192.168.7.3/24 dev lan0");
    EXPECT_EQ(events->drain(), Socket::Drained::Events);

    const int smallest = 1;
    ASSERT_EQ(setsockopt(events->descriptor(), SOL_SOCKET, SO_RCVBUF, &smallest, sizeof smallest),
              0);
    for (int host = 10; host < 60; ++host)
        ip("addr add 192.168.7." + std::to_string(host) + "/24 dev lan0");
    EXPECT_EQ(events->drain(), Socket::Drained::Overrun);
    EXPECT_EQ(events->drain(), Socket::Drained::Nothing);
}

} // namespace
