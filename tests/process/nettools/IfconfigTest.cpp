#include "process/nettools/Golden.h"
#include "process/nettools/ToolRun.h"
#include "support/NetworkNamespace.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace
{

using velq::testing::expectGolden;
using velq::testing::ip;
using velq::testing::runNettool;

class IfconfigTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        ip(R"(-batch - <<'END'
link set lo up
link add lan0 index 10 address 02:00:00:00:00:01 type veth peer name far0 index 11
link set lan0 addrgenmode none
link set lan0 mtu 1492
link set lan0 up
link set far0 up
addr add 192.168.7.2/24 brd + dev lan0
addr add 10.9.0.1/30 dev lan0
addr add fe80::7/64 dev lan0 nodad
addr add fd07::2/64 dev lan0 nodad
END)");
    }

    static bool isActive()
    {
        return runNettool("ifconfig", {"lan0"}).output.find("\tstatus: active\n")
            != std::string::npos;
    }
};

TEST_F(IfconfigTest, ShowsAnInterface)
{
    expectGolden("interface", runNettool("ifconfig", {"lan0"}));
}

TEST_F(IfconfigTest, ShowsAllWithoutAName)
{
    const auto all = runNettool("ifconfig", {"-a"});
    EXPECT_EQ(all.output.find("lo: flags=49<UP,LOOPBACK,RUNNING> mtu 65536\n"), 0U) << all.output;
    EXPECT_NE(all.output.find("\nlan0: flags="), std::string::npos);
    EXPECT_EQ(runNettool("ifconfig", {}).output, all.output);
}

TEST_F(IfconfigTest, AnInterfaceThatIsNotThereIsAFailure)
{
    expectGolden("no-interface", runNettool("ifconfig", {"en9"}));
    EXPECT_EQ(runNettool("ifconfig", {"en9", "up"}).status, 1);
    EXPECT_EQ(runNettool("ifconfig", {""}).status, 1);
    EXPECT_EQ(runNettool("ifconfig", {"", "up"}).status, 1);
    EXPECT_EQ(runNettool("ifconfig", {"a-name-longer-than-any", "up"}).status, 1);
}

TEST_F(IfconfigTest, SwitchesAnInterfaceOffAndOn)
{
    ASSERT_TRUE(isActive());
    const auto off = runNettool("ifconfig", {"lan0", "down"});
    EXPECT_EQ(off.status, 0) << off.errors;
    EXPECT_EQ(off.output + off.errors, "");
    EXPECT_FALSE(isActive());
    EXPECT_EQ(runNettool("ifconfig", {"lan0", "up"}).status, 0);
    EXPECT_TRUE(isActive());
}

TEST_F(IfconfigTest, APulledCableIsInactive)
{
    ip("link set far0 down");
    EXPECT_FALSE(isActive());
}

TEST_F(IfconfigTest, OnlyRootMaySwitch)
{
    const auto refused = runNettool("ifconfig", {"lan0", "down"}, [] {
        if (setgid(65534) != 0 || setuid(65534) != 0)
            _exit(99);
    });
    if (refused.status == 99)
        GTEST_SKIP() << "this user cannot become another";
    expectGolden("interface-refused", refused);
    EXPECT_TRUE(isActive());
}

TEST_F(IfconfigTest, WhatItCannotDoIsMisuse)
{
    expectGolden("interface-misused", runNettool("ifconfig", {"lan0", "192.168.7.9"}));
    EXPECT_EQ(runNettool("ifconfig", {"lan0", "up", "down"}).status, 2);
    EXPECT_EQ(runNettool("ifconfig", {"-x"}).status, 2);
}

} // namespace
