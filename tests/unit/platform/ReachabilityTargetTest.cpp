#include "platform/SCNetworkReachability.h"
#include "support/NetworkNamespace.h"
#include "support/Waiting.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <linux/if_tun.h>
#include <net/if.h>
#include <sys/ioctl.h>
#include <thread>
#include <unistd.h>

namespace
{

using namespace velq;
using velq::testing::ip;
using velq::testing::ipBatch;
using velq::testing::settle;
using velq::testing::waitUntil;

constexpr auto reachable = kSCNetworkReachabilityFlagsReachable;
constexpr auto direct = kSCNetworkReachabilityFlagsIsDirect;

sockaddr_in ipv4(const char *text)
{
    sockaddr_in address{};
    address.sin_family = AF_INET;
    EXPECT_EQ(inet_pton(AF_INET, text, &address.sin_addr), 1);
    return address;
}

std::unique_ptr<SCNetworkReachability> target(const char *address)
{
    const sockaddr_in socketAddress = ipv4(address);
    return SCNetworkReachability::createWithAddress(&socketAddress);
}

SCNetworkReachabilityFlags flags(const char *address)
{
    const auto read = target(address)->getFlags();
    EXPECT_TRUE(read.has_value());
    return read.value_or(0);
}

SCNetworkReachabilityFlags internet()
{
    return flags("0.0.0.0");
}

std::string repeated(int times, const std::string &lines)
{
    std::string all;
    for (int i = 0; i < times; ++i)
        all += lines;
    return all;
}

// A tunnel device carries as long as somebody holds it open.
int openTunnel(const char *name)
{
    const int descriptor = open("/dev/net/tun", O_RDWR | O_CLOEXEC);
    ifreq request{};
    request.ifr_flags = IFF_TUN | IFF_NO_PI;
    std::strncpy(request.ifr_name, name, IFNAMSIZ - 1);
    return ioctl(descriptor, TUNSETIFF, &request) < 0 ? -1 : descriptor;
}

// A wire lan0—far0 with an address and no default route.
class ReachabilityTargetTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        ip("link add lan0 type veth peer name far0");
        ip("link set lan0 up");
        ip("link set far0 up");
        ip("addr add 192.168.7.2/24 dev lan0");
    }

    static void addSecondWire()
    {
        ip("link add lan1 type veth peer name far1");
        ip("link set lan1 up");
        ip("link set far1 up");
    }
};

TEST_F(ReachabilityTargetTest, WithoutADefaultRouteTheInternetIsNotReachable)
{
    EXPECT_EQ(internet(), 0u);
}

TEST_F(ReachabilityTargetTest, ADefaultRouteMakesItReachable)
{
    ip("route add default via 192.168.7.1");
    EXPECT_EQ(internet(), reachable);
}

TEST_F(ReachabilityTargetTest, APulledCableMakesItUnreachable)
{
    ip("route add default via 192.168.7.1");
    ip("link set far0 down");
    EXPECT_EQ(internet(), 0u);
    ip("link set far0 up");
    EXPECT_EQ(internet(), reachable);
}

TEST_F(ReachabilityTargetTest, IPv6AloneIsEnough)
{
    ip("addr flush dev lan0");
    ip("addr add 2001:db8::2/64 dev lan0 nodad");
    ip("-6 route add default via 2001:db8::1");
    EXPECT_EQ(internet(), reachable);
    ip("link set far0 down");
    EXPECT_EQ(internet(), 0u);
}

TEST_F(ReachabilityTargetTest, ARouteThatLeadsNowhereIsNone)
{
    ip("route add unreachable default");
    EXPECT_EQ(internet(), 0u);
    ip("route add blackhole default metric 5");
    EXPECT_EQ(internet(), 0u);
}

TEST_F(ReachabilityTargetTest, OneUsableDefaultRouteOfSeveralIsEnough)
{
    addSecondWire();
    ip("addr add 10.0.0.2/24 dev lan1");
    ip("route add default via 10.0.0.1 metric 10");
    ip("route add default via 192.168.7.1 metric 200");
    ip("link set far1 down");
    EXPECT_EQ(internet(), reachable);
    ip("link set far0 down");
    EXPECT_EQ(internet(), 0u);
}

TEST_F(ReachabilityTargetTest, OneUsableHopOfAMultipathDefaultIsEnough)
{
    addSecondWire();
    ip("addr add 10.0.0.2/24 dev lan1");
    ip("route add default nexthop via 10.0.0.1 nexthop via 192.168.7.1");
    ip("link set far1 down");
    EXPECT_EQ(internet(), reachable);
    ip("link set far0 down");
    EXPECT_EQ(internet(), 0u);
}

TEST_F(ReachabilityTargetTest, ADefaultRouteInATableOfItsOwnCounts)
{
    ip("route add default via 192.168.7.1 table 100");
    ip("rule add from all table 100");
    EXPECT_EQ(internet(), reachable);
}

TEST_F(ReachabilityTargetTest, ATableThatNoRuleLeadsToDoesNotCount)
{
    ip("route add default via 192.168.7.1 table 100");
    EXPECT_EQ(internet(), 0u);
}

TEST_F(ReachabilityTargetTest, ABetterRouteThatRefusesWins)
{
    ip("route add default via 192.168.7.1 metric 100");
    ip("route add unreachable default metric 200");
    EXPECT_EQ(internet(), reachable);
    ip("route add unreachable default metric 50");
    EXPECT_EQ(internet(), 0u);
}

TEST_F(ReachabilityTargetTest, AnIPv6RouterWithoutAnAddressFromItIsNotEnough)
{
    ip("addr flush dev lan0");
    ip("addr add fe80::2/64 dev lan0 nodad");
    ip("-6 route add default via fe80::1 dev lan0");
    EXPECT_EQ(internet(), 0u);
    ip("addr add 2001:db8::2/64 dev lan0 nodad");
    EXPECT_EQ(internet(), reachable);
}

TEST_F(ReachabilityTargetTest, ATunnelIsNotCarriedByAContainersBridge)
{
    const int tunnel = openTunnel("tun9");
    ASSERT_GE(tunnel, 0) << "no tunnel device: " << std::strerror(errno);
    ip("link set tun9 up");
    ip("route add default dev tun9");
    ip("link add br0 type bridge");
    ip("link add port0 type veth peer name inside0");
    ip("link set port0 master br0 up");
    ip("link set inside0 up");
    ip("link set br0 up");
    EXPECT_EQ(internet(), reachable);
    ip("link set far0 down");
    // The container's own end is in the container.
    ip("link set inside0 master br0");
    EXPECT_EQ(internet(), 0u);
    close(tunnel);
}

TEST_F(ReachabilityTargetTest, ATunnelCarriesNothingByItself)
{
    const int tunnel = openTunnel("tun9");
    ASSERT_GE(tunnel, 0) << "no tunnel device: " << std::strerror(errno);
    ip("link set tun9 up");
    ip("route add default dev tun9");
    EXPECT_EQ(internet(), reachable);
    ip("link set far0 down");
    EXPECT_EQ(internet(), 0u);
    close(tunnel);
}

TEST_F(ReachabilityTargetTest, AThousandRoutesDoNotHideTheDefault)
{
    std::string lines;
    for (int net = 0; net < 1000; ++net) {
        lines += "route add 10." + std::to_string(net / 250) + "." + std::to_string(net % 250)
            + ".0/24 via 192.168.7.1\n";
    }
    ipBatch(lines);
    EXPECT_EQ(internet(), 0u);
    ip("route add default via 192.168.7.1");
    EXPECT_EQ(internet(), reachable);
}

TEST_F(ReachabilityTargetTest, RoutesOfHalfTheInternetEachDoNotHideTheDefault)
{
    ip("route add default via 192.168.7.1");
    ip("route add blackhole 0.0.0.0/1");
    ip("route add blackhole 128.0.0.0/1");
    EXPECT_EQ(internet(), reachable);
}

TEST_F(ReachabilityTargetTest, ANeighbourIsDirectAndAFarHostIsNot)
{
    EXPECT_EQ(flags("192.168.7.77"), reachable | direct);
    EXPECT_EQ(flags("198.51.100.1"), 0u);
    ip("route add default via 192.168.7.1");
    EXPECT_EQ(flags("198.51.100.1"), reachable);
}

TEST_F(ReachabilityTargetTest, AHostBehindAPulledCableIsNotReachable)
{
    ip("link set far0 down");
    EXPECT_EQ(flags("192.168.7.77"), 0u);
}

TEST_F(ReachabilityTargetTest, TheMachineItselfIsReachable)
{
    EXPECT_EQ(flags("127.0.0.1"), reachable | direct);
    EXPECT_EQ(flags("192.168.7.2"), reachable | direct);
}

TEST_F(ReachabilityTargetTest, TheLocalLinkIsDirectWhileALinkCarriesANetwork)
{
    EXPECT_EQ(flags("169.254.0.0"), reachable | direct);
    ip("link set far0 down");
    EXPECT_EQ(flags("169.254.0.0"), 0u);
}

TEST_F(ReachabilityTargetTest, NamesAreResolvedFirst)
{
    EXPECT_EQ(SCNetworkReachability::createWithName(QStringLiteral("192.168.7.5"))->getFlags(),
              reachable | direct);
    EXPECT_EQ(SCNetworkReachability::createWithName(QStringLiteral("localhost"))->getFlags(),
              reachable | direct);
}

TEST_F(ReachabilityTargetTest, ANameThatDoesNotResolveIsNotReachable)
{
    EXPECT_EQ(SCNetworkReachability::createWithName(QStringLiteral("no such name"))->getFlags(),
              0u);
}

TEST(ReachabilityFactoryTest, RefusesWhatIsNoTarget)
{
    EXPECT_EQ(SCNetworkReachability::createWithName(QString()), nullptr);
    EXPECT_EQ(SCNetworkReachability::createWithName(QStringLiteral("")), nullptr);
    EXPECT_EQ(SCNetworkReachability::createWithAddress(nullptr), nullptr);
    sockaddr_in other{};
    other.sin_family = AF_INET6;
    EXPECT_EQ(SCNetworkReachability::createWithAddress(&other), nullptr);
}

struct Heard {
    int calls = 0;
    SCNetworkReachabilityFlags last = 0;
};

void hear(SCNetworkReachabilityRef, SCNetworkReachabilityFlags flags, void *info)
{
    auto &heard = *static_cast<Heard *>(info);
    ++heard.calls;
    heard.last = flags;
}

class ReachabilityEventsTest : public ReachabilityTargetTest
{
protected:
    void SetUp() override
    {
        ReachabilityTargetTest::SetUp();
        if (IsSkipped())
            return;
        watched = target("0.0.0.0");
        watched->setCallback(hear, &heard);
        ASSERT_TRUE(watched->scheduleWithRunLoop());
    }

    std::unique_ptr<SCNetworkReachability> watched;
    Heard heard;
};

TEST_F(ReachabilityEventsTest, AChangeCallsBackOnceWithTheFlags)
{
    ip("route add default via 192.168.7.1");
    ASSERT_TRUE(waitUntil([&] { return heard.calls > 0; }));
    EXPECT_EQ(heard.last, reachable);
    ip("link set far0 down");
    ASSERT_TRUE(waitUntil([&] { return heard.last == 0; }));
    EXPECT_EQ(heard.calls, 2);
}

TEST_F(ReachabilityEventsTest, EventsThatChangeNothingAreNotTold)
{
    ip("addr add 192.168.7.3/24 dev lan0");
    ip("route add default via 192.168.7.1");
    ASSERT_TRUE(waitUntil([&] { return heard.calls > 0; }));
    EXPECT_EQ(heard.calls, 1);
}

TEST_F(ReachabilityEventsTest, ABurstIsLookedAtAsOne)
{
    ipBatch(repeated(200, "route add default via 192.168.7.1\nroute del default\n")
            + "route add default via 192.168.7.1\n");
    ASSERT_TRUE(waitUntil([&] { return heard.last == reachable; }));
    EXPECT_EQ(heard.calls, 1);
}

TEST_F(ReachabilityEventsTest, AfterAnOverrunTheStateIsReadAnew)
{
    // More events than the socket's buffer holds, all before the event loop runs.
    ipBatch(repeated(3000, "addr add 10.9.0.1/32 dev lan0\naddr del 10.9.0.1/32 dev lan0\n"));
    ip("route add default via 192.168.7.1");
    ASSERT_TRUE(waitUntil([&] { return heard.last == reachable; }));
}

TEST_F(ReachabilityEventsTest, UnscheduledItIsSilent)
{
    EXPECT_TRUE(watched->unscheduleFromRunLoop());
    EXPECT_TRUE(watched->unscheduleFromRunLoop());
    auto other = target("0.0.0.0");
    Heard otherHeard;
    other->setCallback(hear, &otherHeard);
    ASSERT_TRUE(other->scheduleWithRunLoop());
    ip("route add default via 192.168.7.1");
    ASSERT_TRUE(waitUntil([&] { return otherHeard.calls == 1; }));
    EXPECT_EQ(heard.calls, 0);
}

TEST_F(ReachabilityEventsTest, ADestroyedTargetIsSilent)
{
    watched.reset();
    ip("route add default via 192.168.7.1");
    settle();
    EXPECT_EQ(heard.calls, 0);
}

TEST_F(ReachabilityEventsTest, ANameIsLookedAtAgain)
{
    auto named = SCNetworkReachability::createWithName(QStringLiteral("198.51.100.1"));
    Heard namedHeard;
    named->setCallback(hear, &namedHeard);
    ASSERT_TRUE(named->scheduleWithRunLoop());
    // The first look says what there is; only what differs from it is told.
    settle();
    ip("route add default via 192.168.7.1");
    ASSERT_TRUE(waitUntil([&] { return heard.calls == 1; }));
    ip("route del default");
    ASSERT_TRUE(waitUntil([&] { return heard.calls == 2; }));
    ip("route add default via 192.168.7.1");
    EXPECT_TRUE(waitUntil([&] { return namedHeard.last == reachable; }));
}

TEST(ReachabilitySchedulingTest, AThreadWithoutAnEventLoopIsRefused)
{
    bool scheduled = true;
    std::thread([&] { scheduled = target("0.0.0.0")->scheduleWithRunLoop(); }).join();
    EXPECT_FALSE(scheduled);
}

} // namespace
