#include "nettools/networksetup/ProxyAddress.h"

#include <gtest/gtest.h>

namespace
{

using velq::nettools::Proxy;
using velq::nettools::proxyAt;
using velq::nettools::ProxyKind;

void expectProxy(const char *address, const char *server, int port, bool authenticated = false)
{
    const Proxy proxy = proxyAt(ProxyKind::Web, address);
    EXPECT_EQ(proxy.server, server) << address;
    EXPECT_EQ(proxy.port, port) << address;
    EXPECT_EQ(proxy.authenticated, authenticated) << address;
    EXPECT_FALSE(proxy.enabled) << address;
}

TEST(ProxyAddressTest, AColonOrABlankStandsBeforeThePort)
{
    expectProxy("proxy.example:3128", "proxy.example", 3128);
    expectProxy("proxy.example 3128", "proxy.example", 3128);
    expectProxy("http://proxy.example:3128", "proxy.example", 3128);
    expectProxy("http://proxy.example 3128", "proxy.example", 3128);
    expectProxy("http://proxy.example:3128/", "proxy.example", 3128);
    expectProxy("http://proxy.example/ 3128", "proxy.example", 3128);
}

TEST(ProxyAddressTest, CredentialsAreNotedButNotShown)
{
    expectProxy("http://anna:p@ss@proxy.example 3128", "proxy.example", 3128, true);
    expectProxy("anna@proxy.example:3128", "proxy.example", 3128, true);
}

TEST(ProxyAddressTest, TheColonsOfAnIPv6AddressAreNoPorts)
{
    expectProxy("[fd00::1]:3128", "fd00::1", 3128);
    expectProxy("http://[fd00::1] 3128", "fd00::1", 3128);
    expectProxy("fd00::1 3128", "fd00::1", 3128);
    expectProxy("fd00::1", "fd00::1", 80);
    expectProxy("[fd00::1]", "fd00::1", 80);
}

TEST(ProxyAddressTest, WithoutAPortItIsTheUsualOne)
{
    expectProxy("http://proxy.example", "proxy.example", 80);
    EXPECT_EQ(proxyAt(ProxyKind::Socks, "socks://proxy.example").port, 1080);
}

TEST(ProxyAddressTest, WhatIsNoPortIsNone)
{
    for (const char *address : {"a:", "a 0", "a:b", "a:65536", "a:-1", "a:80x", "[::1]:"})
        EXPECT_EQ(proxyAt(ProxyKind::Web, address).port, 0) << address;
    for (const char *address : {"", "http://", "@", " "})
        EXPECT_EQ(proxyAt(ProxyKind::Web, address).server, "") << address;
}

} // namespace
