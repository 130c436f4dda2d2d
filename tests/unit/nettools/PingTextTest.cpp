#include "nettools/lib/PingText.h"
#include "unit/nettools/Sample.h"

#include <gtest/gtest.h>

#include <sstream>

namespace
{

using velq::nettools::pingLine;
using velq::testing::sample;

TEST(PingText, EveryLineHasItsWordsThere)
{
    EXPECT_EQ(pingLine("PING probe.test (192.168.77.1) 56(84) bytes of data."),
              "PING probe.test (192.168.77.1): 56 data bytes");
    EXPECT_EQ(pingLine("64 bytes from 192.168.77.1: icmp_seq=1 ttl=64 time=0.045 ms"),
              "64 bytes from 192.168.77.1: icmp_seq=0 ttl=64 time=0.045 ms");
    EXPECT_EQ(pingLine("no answer yet for icmp_seq=12"), "Request timeout for icmp_seq 11");
    EXPECT_EQ(pingLine("From 192.168.77.2 icmp_seq=1 Destination Host Unreachable"),
              "92 bytes from 192.168.77.2: Destination Host Unreachable");
    EXPECT_EQ(pingLine("--- probe.test ping statistics ---"), "--- probe.test ping statistics ---");
    EXPECT_EQ(pingLine("2 packets transmitted, 1 received, 50% packet loss, time 1001ms"),
              "2 packets transmitted, 1 packets received, 50.0% packet loss");
    EXPECT_EQ(pingLine("3 packets transmitted, 0 received, +3 errors, 100% packet loss, time 1ms"),
              "3 packets transmitted, 0 packets received, 100.0% packet loss");
    EXPECT_EQ(pingLine("3 packets transmitted, 2 received, 33.3333% packet loss, time 1ms"),
              "3 packets transmitted, 2 packets received, 33.3% packet loss");
    EXPECT_EQ(pingLine("rtt min/avg/max/mdev = 0.045/0.052/0.060/0.007 ms"),
              "round-trip min/avg/max/stddev = 0.045/0.052/0.060/0.007 ms");
}

std::string linesFor(std::istringstream system)
{
    std::string text;
    for (std::string line; std::getline(system, line);)
        text += pingLine(line) + "\n";
    return text;
}

// What the system's ping says where the sample's host stays silent.
TEST(PingText, LostRepliesAreToldAsInPublicDocumentation)
{
    EXPECT_EQ(linesFor(std::istringstream(
                  "PING 192.168.255.132 (192.168.255.132) 56(84) bytes of data.\n"
                  "no answer yet for icmp_seq=1\n"
                  "no answer yet for icmp_seq=2\n"
                  "\n"
                  "--- 192.168.255.132 ping statistics ---\n"
                  "3 packets transmitted, 0 received, 100% packet loss, time 2031ms\n")),
              sample("ping-lost.txt"));
}

TEST(PingText, RepliesAreToldAsInPublicDocumentation)
{
    EXPECT_EQ(linesFor(std::istringstream(
                  "64 bytes from 192.168.255.131: icmp_seq=1 ttl=255 time=0.987 ms\n"
                  "64 bytes from 192.168.255.131: icmp_seq=2 ttl=255 time=0.806 ms\n"
                  "\n"
                  "--- 192.168.255.131 ping statistics ---\n"
                  "2 packets transmitted, 2 received, 0% packet loss, time 1001ms\n"
                  "rtt min/avg/max/mdev = 0.806/0.897/0.987/0.090 ms\n")),
              sample("ping-answered.txt"));
}

TEST(PingText, TheNumbersBeginAnew)
{
    EXPECT_EQ(pingLine("no answer yet for icmp_seq=0"), "Request timeout for icmp_seq 65535");
}

TEST(PingText, WhatIsNotUnderstoodIsKept)
{
    for (const char *line : {"", "PING", "PING x", "From here", "From x icmp_seq=1", "rtt 1",
                             "64 bytes from x: ttl=3", " packets transmitted, ", "something else"})
        EXPECT_EQ(pingLine(line), line);
}

TEST(PingText, AnyLineCutAnywhereIsHarmless)
{
    const std::string line = "3 packets transmitted, 2 received, 33.3333% packet loss, time 1ms";
    for (size_t length = 0; length < line.size(); ++length)
        EXPECT_LE(pingLine(line.substr(0, length)).size(), line.size() + 16);
}

} // namespace
