#include "process/nettools/Streams.h"
#include "process/nettools/ToolRun.h"
#include "support/NetworkNamespace.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <regex>

namespace
{

using velq::testing::ip;
using velq::testing::runNettool;

class PingTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        ip(R"(-batch - <<'END'
link set lo up
link add lan0 type veth peer name far0
link set lan0 mtu 1400
link set lan0 up
link set far0 up
addr add 192.168.7.2/24 dev lan0
neigh add 192.168.7.9 lladdr 02:00:00:00:00:09 nud permanent dev lan0
END)");
    }
};

TEST_F(PingTest, TellsOfAnEcho)
{
    const auto run = runNettool("ping", {"-c1", "127.0.0.1"});
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(
        std::regex_match(run.output, std::regex(R"(PING 127\.0\.0\.1 \(127\.0\.0\.1\): 56 data bytes
64 bytes from 127\.0\.0\.1: icmp_seq=0 ttl=64 time=[0-9.]+ ms

--- 127\.0\.0\.1 ping statistics ---
1 packets transmitted, 1 packets received, 0\.0% packet loss
round-trip min/avg/max/stddev = [0-9./]+ ms
)"))) << run.output;
}

TEST_F(PingTest, PutsALostReplyIntoWords)
{
    const auto run = runNettool("ping", {"-c", "2", "192.168.7.9"});
    EXPECT_EQ(run.status, 1);
    EXPECT_NE(run.output.find("\nRequest timeout for icmp_seq 0\n"), std::string::npos)
        << run.output;
    EXPECT_NE(run.output.find("2 packets transmitted, 0 packets received, 100.0% packet loss"),
              std::string::npos);
}

TEST_F(PingTest, APacketThatMustStayWholeAndDoesNotFitIsLost)
{
    const auto run = runNettool("ping", {"-c2", "-D", "-s", "1472", "192.168.7.9"});
    EXPECT_NE(run.output.find("\nRequest timeout for icmp_seq 0\n"), std::string::npos)
        << run.output;
    EXPECT_NE(run.errors.find("message too long"), std::string::npos) << run.errors;
    EXPECT_EQ(runNettool("ping", {"-c1", "-D", "-s", "1372", "127.0.0.1"}).status, 0);
}

TEST_F(PingTest, NoRouteIsNoTimeout)
{
    const auto run = runNettool("ping", {"-c1", "203.0.113.9"});
    EXPECT_NE(run.status, 0);
    EXPECT_EQ(run.output, "");
    EXPECT_NE(run.errors.find("Network is unreachable"), std::string::npos) << run.errors;
    EXPECT_EQ(run.errors.find("usage"), std::string::npos);
}

// And an end: it would go on without a count.
TEST_F(PingTest, OutputThatCannotBeWrittenIsAFailure)
{
    const auto full = runNettool("ping", {"127.0.0.1"}, velq::testing::intoFullDevice);
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.errors, "ping: standard output: No space left on device\n");
    const auto closed = runNettool("ping", {"127.0.0.1"}, velq::testing::intoClosedPipe);
    EXPECT_EQ(closed.status, 1);
    EXPECT_EQ(closed.errors, "ping: standard output: Broken pipe\n");
}

TEST_F(PingTest, TheUsersLanguageMakesNoDifference)
{
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    EXPECT_NE(runNettool("ping", {"-c1", "127.0.0.1"}).output.find("1 packets received"),
              std::string::npos);
    unsetenv("LC_ALL");
}

TEST_F(PingTest, AHostThatLooksLikeAnOptionIsNone)
{
    EXPECT_EQ(runNettool("ping", {"-c1", "-Ieth0"}).status, 2);
}

TEST(PingCall, WhatItCannotDoIsMisuse)
{
    for (const std::vector<std::string> &call :
         std::vector<std::vector<std::string>>{{},
                                               {"-c2"},
                                               {"-c", "x", "h"},
                                               {"-s"},
                                               {"-cx", "h"},
                                               {"a", "b"},
                                               {"-f", "h"},
                                               {"-s1234567", "h"}}) {
        const auto run = runNettool("ping", call);
        EXPECT_EQ(run.status, 2);
        EXPECT_NE(run.errors.find("usage: ping"), std::string::npos) << run.errors;
    }
}

TEST(PingCall, ASystemWithoutPingIsTold)
{
    const auto run =
        runNettool("ping", {"-c1", "127.0.0.1"}, [] { setenv("PATH", "/nowhere", 1); });
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "ping: this system has no ping (Debian: iputils-ping)\n");
}

} // namespace
