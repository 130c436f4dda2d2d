#include "nettools/lib/RouteText.h"

#include "support/Addresses.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <linux/rtnetlink.h>

namespace
{

using namespace velq::nettools;
using velq::rtnetlink::NextHop;
using velq::rtnetlink::Route;
using velq::testing::address;

std::string sample(const std::string &name)
{
    std::ifstream file(VELQ_SAMPLES "/" + name);
    return {std::istreambuf_iterator<char>(file), {}};
}

Route entry(const char *destination, uint8_t prefixLength)
{
    Route route;
    route.family = AF_INET;
    route.type = RTN_UNICAST;
    route.prefixLength = prefixLength;
    if (destination != nullptr) {
        route.destination = address(destination);
        route.family = route.destination.family;
    }
    return route;
}

std::string textOf(std::string_view shown, const Route &route, const NextHop &hop,
                   std::string_view interface = "en0")
{
    std::string text;
    appendRouteAnswer(text, {shown, route, hop, interface, 1500});
    return text;
}

TEST(RouteText, TheDefaultRouteIsToldAsInPublicDocumentation)
{
    EXPECT_EQ(textOf("default", entry(nullptr, 0), {1, 0, address("192.168.64.1")}),
              sample("route-get-default.txt"));
}

TEST(RouteText, ARouteToOneHostIsToldAsInPublicDocumentation)
{
    EXPECT_EQ(textOf("203.0.113.7", entry("203.0.113.7", 32), {1, 0, address("192.168.1.1")}),
              sample("route-get-host.txt"));
}

TEST(RouteText, ANetworkOnTheLinkHasAMaskAndNoGateway)
{
    const std::string text = textOf("192.168.1.9", entry("192.168.0.0", 22), {1, 0, {}});
    EXPECT_TRUE(text.starts_with("   route to: 192.168.1.9\ndestination: 192.168.0.0\n"
                                 "       mask: 255.255.252.0\n  interface: en0\n"
                                 "      flags: <UP,DONE,CLONING,STATIC>\n"))
        << text;
}

TEST(RouteText, AGatewayOfTheLinkAloneHasItsZone)
{
    Route route = entry(nullptr, 0);
    route.family = AF_INET6;
    EXPECT_NE(
        textOf("default", route, {1, 0, address("fe80::1")}).find("    gateway: fe80::1%en0\n"),
        std::string::npos);
    EXPECT_NE(textOf("fd00::9", entry("fd00::", 56), {1, 0, {}})
                  .find("       mask: ffff:ffff:ffff:ff00::\n"),
              std::string::npos);
}

} // namespace
