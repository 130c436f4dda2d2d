#include "platform/linux/rtnetlink/Links.h"
#include "platform/linux/rtnetlink/Routes.h"
#include "process/nettools/Golden.h"
#include "process/nettools/ToolRun.h"
#include "support/NetworkNamespace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <linux/rtnetlink.h>
#include <map>
#include <poll.h>
#include <sstream>
#include <sys/socket.h>
#include <unistd.h>
#include <vector>

namespace
{

using velq::rtnetlink::Socket;
using velq::testing::expectGolden;
using velq::testing::ip;
using velq::testing::runNettool;
using velq::testing::ToolRun;

// A home network's link with fixed names, numbers and addresses; nothing happens on it by itself.
constexpr auto homeLink = R"(-batch - <<'END'
link add lan0 index 10 address 02:00:00:00:00:01 type veth peer name far0 index 11
link set lan0 addrgenmode none
link set far0 addrgenmode none
link set lan0 up
link set far0 up
addr add 192.168.7.2/24 brd + dev lan0
END)";

size_t localRoutes6(Socket &socket)
{
    size_t count = 0;
    EXPECT_TRUE(velq::rtnetlink::readRoutes(socket, AF_INET6, 0, [&count](const auto &route) {
        count += route.table == RT_TABLE_LOCAL && route.type != RTN_ANYCAST ? 1 : 0;
        return Socket::Visit::Continue;
    }));
    return count;
}

// The kernel adds the local routes of IPv6 addresses and links when it finds the time.
void awaitLocalRoutes6(size_t count)
{
    auto events = Socket::open(RTMGRP_IPV6_ROUTE);
    auto tables = Socket::open();
    ASSERT_TRUE(events && tables);
    while (localRoutes6(*tables) < count) {
        pollfd waiting{events->descriptor(), POLLIN, 0};
        ASSERT_EQ(poll(&waiting, 1, 10000), 1) << "no " << count << " local routes";
        events->drain();
    }
}

class NetstatTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        if (access("/proc/net/if_inet6", F_OK) != 0) {
            ASSERT_EQ(getenv("CI"), nullptr) << "the kernel has no IPv6";
            GTEST_SKIP() << "the kernel has no IPv6";
        }
        ip(homeLink);
        awaitLocalRoutes6(homeRoutes6);
    }

    // The loopback's address and the groups of both ends of the link.
    static constexpr size_t homeRoutes6 = 3;

    static ToolRun shown()
    {
        ToolRun run = runNettool("netstat", {"-nr"});
        run.output = velq::testing::withoutTimes(run.output);
        return run;
    }
};

std::vector<std::string> columnsOf(const std::string &line)
{
    std::istringstream stream(line);
    return {std::istream_iterator<std::string>(stream), {}};
}

// The devices that a reader of the table finds in it: four-part addresses of the home range that
// lead to something else than the machine itself, its link or everybody.
std::multimap<std::string, std::string> devicesIn(const std::string &table)
{
    std::multimap<std::string, std::string> devices;
    std::istringstream lines(table);
    for (std::string line; std::getline(lines, line);) {
        const auto columns = columnsOf(line);
        if (columns.size() < 2 || columns[0].find("192.168") == std::string::npos
            || std::ranges::count(columns[0], '.') != 3)
            continue;
        const std::string &gateway = columns[1];
        if (gateway != "127.0.0.1" && !gateway.starts_with("link#")
            && gateway != "ff:ff:ff:ff:ff:ff")
            devices.emplace(columns[0], gateway);
    }
    return devices;
}

TEST_F(NetstatTest, ShowsRoutesAndOwnAddresses)
{
    ip(R"(-batch - <<'END'
route add default via 192.168.7.1 metric 100
route add default via 192.168.7.9 metric 600
route add 10.8.0.0/24 via 192.168.7.1
route add 172.16.0.0/12 via 192.168.7.1 proto bgp
route add 192.168.0.0/16 dev lan0
route add 192.168.9.9/32 via 192.168.7.1
route add 192.168.7.44/32 dev lan0
route add 203.0.113.0/24 nexthop via 192.168.7.1 nexthop via 192.168.7.9
route add 224.0.0.0/4 dev lan0
route add blackhole 10.66.0.0/16
route add unreachable 10.67.0.1
route add 198.51.100.0/24 via 192.168.7.1 table 100
addr add fe80::5/64 dev lan0 nodad
addr add 2001:db8::5/64 dev lan0 nodad
route add default via fe80::1 dev lan0
route add 2001:db8:1::/48 via 2001:db8::1
route add 2001:db8:2::2 via 2001:db8::1
route add unreachable 2001:db8:3::/48
END)");
    awaitLocalRoutes6(homeRoutes6 + 2);
    expectGolden("routes", shown());
}

TEST_F(NetstatTest, ShowsNeighbours)
{
    ip(R"(-batch - <<'END'
route add default via 192.168.7.1
addr add fe80::5/64 dev lan0 nodad
neigh add 192.168.7.1 lladdr aa:bb:cc:0d:0e:0f nud reachable dev lan0
neigh add 192.168.7.10 lladdr 00:0b:cc:0d:0e:10 nud stale dev lan0
neigh add 192.168.7.11 lladdr aa:bb:cc:0d:0e:11 nud permanent dev lan0
neigh add 192.168.7.12 nud failed dev lan0
neigh add 192.168.7.13 nud incomplete dev lan0
neigh add 224.0.0.251 lladdr 01:00:5e:00:00:fb nud noarp dev lan0
neigh add fe80::1 lladdr aa:bb:cc:0d:0e:0f nud reachable router dev lan0
neigh add fe80::9 nud failed dev lan0
END)");
    awaitLocalRoutes6(homeRoutes6 + 1);
    expectGolden("neighbours", shown());
}

TEST_F(NetstatTest, AReaderFindsTheConfirmedNeighboursAndNoneElse)
{
    ip(R"(-batch - <<'END'
addr add 192.168.7.3/24 dev lan0
addr add 192.168.99.1/32 dev lo
route add 192.168.8.0/24 dev lan0
neigh add 192.168.7.1 lladdr aa:bb:cc:0d:0e:0f nud reachable dev lan0
neigh add 192.168.7.10 lladdr aa:bb:cc:0d:0e:10 nud stale dev lan0
neigh add 192.168.7.11 lladdr aa:bb:cc:0d:0e:11 nud delay dev lan0
neigh add 192.168.7.12 nud failed dev lan0
neigh add 192.168.7.13 nud incomplete dev lan0
neigh add 192.168.7.254 lladdr aa:bb:cc:0d:0e:fe nud permanent dev lan0
neigh add 10.192.168.3 lladdr aa:bb:cc:0d:0e:03 nud reachable dev lan0
neigh add 10.0.0.1 lladdr aa:bb:cc:0d:0e:04 nud reachable dev lan0
END)");
    const std::multimap<std::string, std::string> confirmed = {
        {"192.168.7.1", "aa:bb:cc:d:e:f"},   {"192.168.7.10", "aa:bb:cc:d:e:10"},
        {"192.168.7.11", "aa:bb:cc:d:e:11"}, {"192.168.7.254", "aa:bb:cc:d:e:fe"},
        {"10.192.168.3", "aa:bb:cc:d:e:3"},
    };
    EXPECT_EQ(devicesIn(shown().output), confirmed);
}

TEST_F(NetstatTest, AReaderTakesAHostRouteForADevice)
{
    ip("route add 192.168.9.9/32 via 192.168.7.1");
    const std::multimap<std::string, std::string> one = {{"192.168.9.9", "192.168.7.1"}};
    EXPECT_EQ(devicesIn(shown().output), one);
}

TEST_F(NetstatTest, OptionsComeTogetherOrAlone)
{
    const std::string table = runNettool("netstat", {"-nr"}).output;
    EXPECT_THAT(table, testing::StartsWith("Routing tables\n\nInternet:\n"));
    EXPECT_EQ(runNettool("netstat", {"-rn"}).output, table);
    EXPECT_EQ(runNettool("netstat", {"-n", "-r"}).output, table);
    EXPECT_EQ(runNettool("netstat", {"-r", "-n"}).output, table);
}

TEST_F(NetstatTest, TenThousandNeighboursArriveWhole)
{
    const std::string batch = testing::TempDir() + "neighbours-" + std::to_string(getpid());
    std::ofstream lines(batch);
    lines << "addr add 192.168.0.2/16 dev lan0\n";
    for (int host = 0; host < 10000; ++host)
        lines << "neigh add 192.168." << 20 + host / 250 << '.' << host % 250
              << " lladdr 02:00:00:00:00:05 nud permanent dev lan0\n";
    lines.close();
    ip("-batch " + batch);
    std::filesystem::remove(batch);
    EXPECT_EQ(devicesIn(runNettool("netstat", {"-nr"}).output).size(), 10000u);
}

TEST(NetstatAlone, AnEmptyNamespaceHasNoTables)
{
    ENTER_NETWORK_NAMESPACE_OR_SKIP();
    ip("addr flush dev lo");
    ip("link set lo down");
    expectGolden("no-routes", runNettool("netstat", {"-nr"}));
}

// A socket must not take the place of closed output and be written to.
TEST(NetstatAlone, ClosedDescriptorsStayOutOfTheWay)
{
    const ToolRun failed = runNettool("netstat", {"-nr"}, [] {
        close(STDIN_FILENO);
        close(STDOUT_FILENO);
        close(STDERR_FILENO);
    });
    EXPECT_EQ(failed.status, 1);
}

TEST(NetstatCall, WhatItCannotDoIsMisuse)
{
    expectGolden("netstat-without-options", runNettool("netstat", {}));
    expectGolden("netstat-unexpected-argument", runNettool("netstat", {"-nr", "en0"}));
}

} // namespace
