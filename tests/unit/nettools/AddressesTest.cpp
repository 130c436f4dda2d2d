#include "nettools/lib/Addresses.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>

namespace
{

using namespace velq::nettools;
using velq::rtnetlink::Address;

Address address(const std::string &text)
{
    Address result;
    result.family = text.find(':') == std::string::npos ? AF_INET : AF_INET6;
    EXPECT_EQ(inet_pton(result.family, text.c_str(), result.bytes.data()), 1) << text;
    return result;
}

std::string hardware(const std::vector<uint8_t> &octets)
{
    std::string text;
    appendHardwareAddress(text, octets);
    return text;
}

std::string network(const std::string &number, uint8_t prefixLength, std::string_view zone = {})
{
    std::string text;
    appendNetwork(text, address(number), prefixLength, zone);
    return text;
}

TEST(HardwareAddress, OctetsHaveNoLeadingZero)
{
    EXPECT_EQ(hardware({0x01, 0x00, 0x5e, 0x00, 0x00, 0xfb}), "1:0:5e:0:0:fb");
    EXPECT_EQ(hardware({0xaa, 0xbb, 0xcc, 0x0d, 0x0e, 0x0f}), "aa:bb:cc:d:e:f");
    EXPECT_EQ(hardware({}), "");
}

struct NetworkCase {
    const char *number;
    uint8_t prefixLength;
    const char *text;
};

class Network4 : public testing::TestWithParam<NetworkCase>
{
};

TEST_P(Network4, IsShortenedByTheOldClasses)
{
    EXPECT_EQ(network(GetParam().number, GetParam().prefixLength), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Samples, Network4,
    testing::Values(
        NetworkCase{"127.0.0.0", 8, "127"}, NetworkCase{"10.0.0.0", 8, "10"},
        NetworkCase{"1.0.0.0", 8, "1"}, NetworkCase{"2.0.0.0", 7, "2/7"},
        NetworkCase{"0.0.0.0", 1, "0/1"}, NetworkCase{"128.0.0.0", 1, "128.0/1"},
        NetworkCase{"10.0.0.0", 24, "10/24"}, NetworkCase{"10.8.0.0", 24, "10.8/24"},
        NetworkCase{"10.1.0.0", 16, "10.1/16"}, NetworkCase{"10.10.10.0", 24, "10.10.10/24"},
        NetworkCase{"100.64.0.0", 10, "100.64/10"}, NetworkCase{"169.254.0.0", 16, "169.254"},
        NetworkCase{"172.16.0.0", 12, "172.16/12"}, NetworkCase{"172.16.24.0", 21, "172.16.24/21"},
        NetworkCase{"192.168.1.0", 24, "192.168.1"}, NetworkCase{"192.168.0.0", 16, "192.168.0/16"},
        NetworkCase{"192.168.138.0", 23, "192.168.138/23"},
        NetworkCase{"192.168.44.32", 27, "192.168.44.32/27"},
        NetworkCase{"198.18.0.0", 15, "198.18.0/15"},
        NetworkCase{"198.51.100.0", 26, "198.51.100/26"},
        NetworkCase{"198.51.100.128", 25, "198.51.100.128/25"},
        NetworkCase{"192.168.1.5", 32, "192.168.1.5/32"}, NetworkCase{"224.0.0.0", 4, "224.0.0/4"},
        NetworkCase{"255.255.255.255", 32, "255.255.255.255/32"}));

TEST(Network6, AlwaysTellsThePrefix)
{
    EXPECT_EQ(network("2001:db8::", 64), "2001:db8::/64");
    EXPECT_EQ(network("fe80::", 64, "en0"), "fe80::%en0/64");
    EXPECT_EQ(network("ff00::", 8), "ff00::/8");
}

TEST(Network, AnUnsetAddressIsTheDefault)
{
    std::string text;
    appendNetwork(text, {}, 0, {});
    EXPECT_EQ(text, "default");
}

TEST(AddressText, CarriesItsZone)
{
    std::string text;
    appendAddress(text, address("fe80::1"), "en0");
    EXPECT_EQ(text, "fe80::1%en0");
    text.clear();
    appendAddress(text, address("192.168.1.1"), {});
    EXPECT_EQ(text, "192.168.1.1");
}

TEST(AddressScope, OnlyLinkLocalAddressesNeedTheirLink)
{
    EXPECT_TRUE(isLinkScoped(address("fe80::1")));
    EXPECT_TRUE(isLinkScoped(address("febf::1")));
    EXPECT_TRUE(isLinkScoped(address("ff02::fb")));
    EXPECT_FALSE(isLinkScoped(address("fec0::1")));
    EXPECT_FALSE(isLinkScoped(address("ff05::2")));
    EXPECT_FALSE(isLinkScoped(address("2001:db8::1")));
    EXPECT_FALSE(isLinkScoped(address("169.254.0.1")));
}

TEST(AddressScope, GroupsAreTold)
{
    EXPECT_TRUE(isMulticast(address("224.0.0.251")));
    EXPECT_TRUE(isMulticast(address("239.255.255.250")));
    EXPECT_TRUE(isMulticast(address("ff02::1")));
    EXPECT_FALSE(isMulticast(address("255.255.255.255")));
    EXPECT_FALSE(isMulticast(address("192.168.1.1")));
    EXPECT_FALSE(isMulticast({}));
}

} // namespace
