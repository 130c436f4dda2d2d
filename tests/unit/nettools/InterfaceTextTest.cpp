#include "nettools/lib/InterfaceText.h"

#include "support/Addresses.h"
#include "unit/nettools/Sample.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <linux/if.h>
#include <linux/if_arp.h>
#include <linux/rtnetlink.h>
#include <sstream>

namespace
{

using namespace velq::nettools;
using velq::rtnetlink::InterfaceAddress;
using velq::rtnetlink::Link;
using velq::testing::address;

InterfaceAddress ofLink(uint32_t index, const char *text, uint8_t prefixLength, uint8_t scope)
{
    InterfaceAddress result;
    result.local = address(text);
    result.family = result.local.family;
    result.interface = index;
    result.prefixLength = prefixLength;
    result.scope = scope;
    return result;
}

Link wired()
{
    Link link;
    link.index = 4;
    link.name = "en0";
    link.mtu = 1500;
    link.hardwareType = ARPHRD_ETHER;
    link.hardwareAddress = {0x6c, 0x40, 0x08, 0xb0, 0x58, 0x78};
    link.flags = IFF_UP | IFF_BROADCAST | IFF_RUNNING | IFF_MULTICAST | IFF_LOWER_UP;
    return link;
}

// What the kernel of Linux has no counterpart for is left out.
std::string told(const std::string &name)
{
    std::istringstream whole(velq::testing::sample(name));
    std::string text;
    for (std::string line; std::getline(whole, line);) {
        if (!line.starts_with("\tnd6 ") && !line.starts_with("\toptions="))
            text += line + "\n";
    }
    return text;
}

std::string textOf(const Link &link, const std::vector<InterfaceAddress> &addresses)
{
    std::string text;
    appendInterface(text, link, addresses);
    return text;
}

TEST(InterfaceText, AWiredPortIsToldAsInPublicDocumentation)
{
    InterfaceAddress inet = ofLink(4, "192.168.1.131", 24, RT_SCOPE_UNIVERSE);
    inet.broadcast = address("192.168.1.255");
    EXPECT_EQ(textOf(wired(),
                     {inet, ofLink(4, "fe80::6e40:8ff:feb0:5878", 64, RT_SCOPE_LINK),
                      ofLink(5, "10.0.0.1", 8, RT_SCOPE_UNIVERSE)}),
              told("ifconfig-en0.txt"));
}

TEST(InterfaceText, ALoopbackIsToldAsInPublicDocumentation)
{
    Link link;
    link.index = 1;
    link.name = "lo0";
    link.mtu = 16384;
    link.hardwareType = ARPHRD_LOOPBACK;
    link.flags = IFF_UP | IFF_LOOPBACK | IFF_RUNNING | IFF_MULTICAST | IFF_LOWER_UP;
    EXPECT_EQ(
        textOf(link,
               {ofLink(1, "127.0.0.1", 8, RT_SCOPE_HOST), ofLink(1, "::1", 128, RT_SCOPE_HOST)}),
        told("ifconfig-lo0.txt"));
}

// The kernel of Linux would not call it running.
TEST(InterfaceText, APortWithoutACableIsToldAsInPublicDocumentation)
{
    Link link = wired();
    link.name = "en0";
    link.hardwareAddress = {0x0c, 0x4d, 0xe9, 0xd0, 0x0c, 0x2f};
    link.flags &= ~static_cast<uint32_t>(IFF_LOWER_UP);
    EXPECT_EQ(textOf(link, {}), told("ifconfig-inactive.txt"));
}

TEST(InterfaceText, IsInactiveWithoutACableOrWhenSwitchedOff)
{
    Link link = wired();
    link.flags &= ~static_cast<uint32_t>(IFF_LOWER_UP | IFF_RUNNING);
    EXPECT_EQ(textOf(link, {}),
              "en0: flags=8823<UP,BROADCAST,SMART,SIMPLEX,MULTICAST> mtu 1500\n"
              "\tether 6c:40:08:b0:58:78 \n\tmedia: autoselect (none)\n\tstatus: inactive\n");
    link = wired();
    link.flags &= ~static_cast<uint32_t>(IFF_UP);
    EXPECT_NE(textOf(link, {}).find("\tstatus: inactive\n"), std::string::npos);
}

TEST(InterfaceText, ATunnelHasTwoEndsAndNoStatus)
{
    Link link;
    link.index = 9;
    link.name = "tun0";
    link.mtu = 1420;
    link.hardwareType = ARPHRD_NONE;
    link.flags = IFF_UP | IFF_POINTOPOINT | IFF_RUNNING | IFF_MULTICAST | IFF_LOWER_UP;
    InterfaceAddress inet = ofLink(9, "10.0.0.2", 32, RT_SCOPE_UNIVERSE);
    inet.peer = address("10.0.0.1");
    EXPECT_EQ(textOf(link, {inet}),
              "tun0: flags=8051<UP,POINTOPOINT,RUNNING,MULTICAST> mtu 1420\n"
              "\tinet 10.0.0.2 --> 10.0.0.1 netmask 0xffffffff \n");
}

TEST(InterfaceText, EveryAddressHasALineAndTheLinksOwnComesFirst)
{
    const std::string text = textOf(wired(),
                                    {ofLink(4, "10.0.0.1", 0, RT_SCOPE_UNIVERSE),
                                     ofLink(4, "192.168.1.2", 25, RT_SCOPE_UNIVERSE),
                                     ofLink(4, "fd00::2", 64, RT_SCOPE_UNIVERSE),
                                     ofLink(4, "fe80::1", 64, RT_SCOPE_LINK)});
    EXPECT_NE(text.find("\tinet6 fe80::1%en0 prefixlen 64 scopeid 0x4 \n"
                        "\tinet 10.0.0.1 netmask 0x0 \n"
                        "\tinet 192.168.1.2 netmask 0xffffff80 \n"
                        "\tinet6 fd00::2 prefixlen 64 \n"),
              std::string::npos)
        << text;
}

} // namespace
