#include "nettools/networksetup/ServiceText.h"
#include "unit/nettools/Sample.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq::nettools;
using velq::testing::sample;

Port port(Port::Kind kind, const std::string &name, const std::string &device,
          const std::string &address = "")
{
    return {kind, 1, device, name, address};
}

const Port wifi = port(Port::Kind::Wireless, "Wi-Fi", "en1", "f8:1e:df:e8:46:66");

template <typename Append> std::string textBy(Append append)
{
    std::string text;
    append(text);
    return text;
}

ServiceInfo infoWith(ServiceInfo::Method method, const std::string &address,
                     const std::string &router)
{
    ServiceInfo info;
    info.method = method;
    info.address = address;
    info.prefixLength = 24;
    info.router = router;
    return info;
}

TEST(ServiceText, PortsAreToldAsInPublicDocumentation)
{
    const auto text = textBy([](std::string &out) {
        appendHardwarePorts(
            out, {port(Port::Kind::Wired, "Ethernet", "en0", "c4:2c:03:0c:5f:e9"), wifi});
    });
    EXPECT_EQ(text, "\n" + sample("networksetup-listallhardwareports.txt"));
}

TEST(ServiceText, APortWithoutAnAddressSaysSo)
{
    const auto text = textBy([](std::string &out) {
        appendHardwarePorts(out,
                            {port(Port::Kind::Modem, "Bluetooth DUN", "Bluetooth-Modem"),
                             port(Port::Kind::Wired, "Ethernet", "en0", "a8:20:66:31:95:57")});
    });
    EXPECT_EQ(text.find("\n" + sample("networksetup-listallhardwareports-no-address.txt") + "\n"),
              0U)
        << text;
}

TEST(ServiceText, ServicesAreToldAsInPublicDocumentation)
{
    std::vector<Service> services;
    for (const char *name : {"Wi-Fi", "USB 10/100/1000 LAN", "Thunderbolt Bridge", "iPhone USB"})
        services.push_back({port(Port::Kind::Wired, name, "en0"), true});
    services.push_back({port(Port::Kind::Bluetooth, "Bluetooth PAN", "en6"), false});
    EXPECT_EQ(textBy([&](std::string &out) { appendServices(out, services); }),
              sample("networksetup-listallnetworkservices.txt"));
}

TEST(ServiceText, TheirOrderIsToldAsInPublicDocumentation)
{
    const std::vector<Service> services{
        {port(Port::Kind::Wireless, "Wi-Fi", "en0"), true},
        {port(Port::Kind::Wired, "Thunderbolt Ethernet", "en4"), false},
        {port(Port::Kind::Wired, "Display Ethernet", "en6"), true}};
    EXPECT_EQ(textBy([&](std::string &out) { appendServiceOrder(out, services); }),
              sample("networksetup-listnetworkserviceorder.txt"));
}

TEST(ServiceText, InfoIsToldAsInPublicDocumentation)
{
    const auto told = [](const std::string &address, const ServiceInfo &info) {
        return textBy([&](std::string &out) {
            appendInfo(out, port(Port::Kind::Wireless, "Wi-Fi", "en0", address), info);
        });
    };
    using Method = ServiceInfo::Method;
    EXPECT_EQ(
        told("88:66:5a:aa:bb:cc", infoWith(Method::Automatic, "192.168.1.100", "192.168.1.1")),
        sample("networksetup-getinfo-dhcp.txt"));
    EXPECT_EQ(told("e6:ce:8e:10:a6:af", infoWith(Method::Manual, "192.168.0.129", "192.168.0.1")),
              sample("networksetup-getinfo-manual.txt"));
    EXPECT_EQ(told("f8:1e:df:e8:46:66", infoWith(Method::Automatic, "", "")),
              sample("networksetup-getinfo-no-address.txt"));
}

TEST(ServiceText, AWiredServiceHasAnEthernetAddressAndIpv6CanBeOff)
{
    ServiceInfo info = infoWith(ServiceInfo::Method::Manual, "10.0.0.2", "");
    info.method6 = ServiceInfo::Method::Off;
    EXPECT_EQ(textBy([&](std::string &out) {
                  appendInfo(out, port(Port::Kind::Wired, "Ethernet", "en0", "02:00:00:00:00:01"),
                             info);
              }),
              "Manual Configuration\nIP address: 10.0.0.2\nSubnet mask: 255.255.255.0\n"
              "Router: none\nIPv6: Off\nEthernet Address: 02:00:00:00:00:01\n");
}

TEST(ServiceText, DnsServersAreToldAsInPublicDocumentation)
{
    const std::vector<std::string> servers{"1.1.1.1", "1.0.0.1", "2606:4700:4700::1111",
                                           "2606:4700:4700::1001"};
    EXPECT_EQ(textBy([&](std::string &out) { appendDnsServers(out, "Wi-Fi", servers); }),
              sample("networksetup-getdnsservers.txt"));
    EXPECT_EQ(textBy([&](std::string &out) { appendDnsServers(out, "Wi-Fi", {}); }),
              sample("networksetup-getdnsservers-none.txt"));
}

TEST(ServiceText, MtuAndProxyAreToldAsInPublicDocumentation)
{
    EXPECT_EQ(textBy([](std::string &out) {
                  appendMtu(out, {1500, 1500});
              }),
              sample("networksetup-getMTU.txt"));
    EXPECT_EQ(textBy([](std::string &out) { appendProxy(out, {}); }),
              sample("networksetup-getwebproxy.txt"));
    EXPECT_EQ(textBy([](std::string &out) {
                  appendProxy(out, {true, "127.0.0.1", 9090, false});
              }),
              sample("networksetup-getwebproxy-on.txt"));
}

TEST(ServiceText, AnMtuThatWasNotSetIsTheActiveOne)
{
    EXPECT_EQ(textBy([](std::string &out) {
                  appendMtu(out, {1492, 0});
              }),
              "Active MTU: 1492 (Current Setting: 1492)\n");
}

TEST(ServiceText, AProxyThatIsOnHasFourLines)
{
    EXPECT_EQ(textBy([](std::string &out) {
                  appendProxy(out, {true, "proxy.example", 3128, true});
              }),
              "Enabled: Yes\nServer: proxy.example\nPort: 3128\nAuthenticated Proxy Enabled: 1\n");
}

TEST(ServiceText, EveryPrefixHasANetmask)
{
    EXPECT_EQ(netmaskText(0), "0.0.0.0");
    EXPECT_EQ(netmaskText(1), "128.0.0.0");
    EXPECT_EQ(netmaskText(8), "255.0.0.0");
    EXPECT_EQ(netmaskText(23), "255.255.254.0");
    EXPECT_EQ(netmaskText(24), "255.255.255.0");
    EXPECT_EQ(netmaskText(31), "255.255.255.254");
    EXPECT_EQ(netmaskText(32), "255.255.255.255");
}

} // namespace
