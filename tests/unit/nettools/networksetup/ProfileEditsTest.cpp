#include "nettools/networkmanager/ProfileEdits.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using namespace velq::nettools;
using testing::ElementsAre;
using testing::IsEmpty;

Value group(const std::string &name, Value::Map entries)
{
    return Value(Value::Map{{name, Value(std::move(entries))}});
}

Device device(uint32_t type)
{
    Device result;
    result.type = type;
    return result;
}

const Edit &editOf(const std::vector<Edit> &edits, const std::string &name, const std::string &key)
{
    return *std::ranges::find_if(
        edits, [&](const Edit &edit) { return edit.group == name && edit.key == key; });
}

TEST(ProfileEdits, DhcpTakesTheAddressesAway)
{
    const auto edits = dhcpEdits();
    EXPECT_EQ(std::get<std::string>(*editOf(edits, "ipv4", "method").value), "auto");
    for (const char *key : {"addresses", "address-data", "gateway"})
        EXPECT_FALSE(editOf(edits, "ipv4", key).value) << key;
}

TEST(ProfileEdits, DnsServersTakeThePlaceOfTheLeases)
{
    const auto edits = dnsEdits({"8.8.8.8", "2001:db8::1", "8.8.4.4"});
    EXPECT_THAT(std::get<std::vector<uint32_t>>(*editOf(edits, "ipv4", "dns").value),
                ElementsAre(0x08080808U, 0x04040808U));
    EXPECT_EQ(std::get<std::vector<Ipv6Bytes>>(*editOf(edits, "ipv6", "dns").value).size(), 1U);
    EXPECT_FALSE(editOf(edits, "ipv4", "dns-data").value);
    EXPECT_TRUE(std::get<bool>(*editOf(edits, "ipv4", "ignore-auto-dns").value));
    EXPECT_TRUE(std::get<bool>(*editOf(edits, "ipv6", "ignore-auto-dns").value));
}

TEST(ProfileEdits, NoDnsServersGiveTheChoiceBack)
{
    const auto edits = dnsEdits({});
    EXPECT_FALSE(editOf(edits, "ipv4", "dns").value);
    EXPECT_FALSE(editOf(edits, "ipv6", "dns").value);
    EXPECT_FALSE(std::get<bool>(*editOf(edits, "ipv4", "ignore-auto-dns").value));
}

TEST(ProfileEdits, DnsServersAreReadBack)
{
    const Value::List servers{Value(uint64_t{0x01010101}), Value(uint64_t{0x0101a8c0})};
    EXPECT_THAT(dnsServersIn(group("ipv4", {{"dns", Value(servers)}})),
                ElementsAre("1.1.1.1", "192.168.1.1"));
    Value::List bytes(16, Value(uint64_t{0}));
    bytes.back() = Value(uint64_t{1});
    EXPECT_THAT(dnsServersIn(group(
                    "ipv6", {{"dns", Value(Value::List{Value(bytes), Value(Value::List{})})}})),
                ElementsAre("::1", "::"));
    EXPECT_THAT(dnsServersIn(Value()), IsEmpty());
}

TEST(ProfileEdits, TheMtuIsInTheGroupOfTheLink)
{
    EXPECT_EQ(mtuEdits(device(Device::WiFi), 1400).front().group, "802-11-wireless");
    EXPECT_EQ(mtuEdits(device(Device::Modem), 1400).front().group, "gsm");
    EXPECT_EQ(mtuEdits(device(Device::Veth), 1400).front().group, "802-3-ethernet");
    EXPECT_EQ(
        mtuIn(group("802-3-ethernet", {{"mtu", Value(uint64_t{1400})}}), device(Device::Ethernet)),
        1400U);
    EXPECT_EQ(mtuIn(Value(), device(Device::Ethernet)), 0U);
}

TEST(ProfileEdits, AMetricThatWasNotSetIsTheUsualOneOfTheDevice)
{
    EXPECT_EQ(metricIn(group("ipv4", {{"route-metric", Value(int64_t{50})}}), device(Device::WiFi)),
              50);
    EXPECT_EQ(metricIn(group("ipv4", {{"route-metric", Value(int64_t{-1})}}), device(Device::WiFi)),
              600);
    EXPECT_EQ(metricIn(Value(), device(Device::Ethernet)), 100);
}

TEST(ProfileEdits, MethodsHaveNames)
{
    using Method = ServiceInfo::Method;
    const auto method = [](const char *name) {
        return ipv4Method(group("ipv4", {{"method", Value(std::string(name))}}));
    };
    EXPECT_EQ(method("manual"), Method::Manual);
    EXPECT_EQ(method("disabled"), Method::Off);
    EXPECT_EQ(method("link-local"), Method::LinkLocal);
    EXPECT_EQ(method("auto"), Method::Automatic);
    EXPECT_EQ(ipv6Method(Value()), Method::Automatic);
}

} // namespace
