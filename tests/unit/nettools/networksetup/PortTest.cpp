#include "nettools/networksetup/Port.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using testing::ElementsAre;
using velq::nettools::isPlainDeviceName;
using velq::nettools::Port;
using velq::nettools::portNamed;

Port port(Port::Kind kind, uint32_t index, const std::string &device)
{
    return {kind, index, device, "", ""};
}

std::vector<Port> named(std::vector<Port> ports)
{
    namePorts(ports);
    return ports;
}

std::vector<std::string> namesOf(const std::vector<Port> &ports)
{
    std::vector<std::string> names;
    names.reserve(ports.size());
    for (const Port &each : ports)
        names.push_back(each.name);
    return names;
}

TEST(Port, TheFirstOfAKindHasThePlainNameAndTheLoopbackComesLast)
{
    EXPECT_THAT(namesOf(named(
                    {port(Port::Kind::Loopback, 1, "lo"), port(Port::Kind::Wired, 5, "enp4s0"),
                     port(Port::Kind::Wireless, 3, "wlp2s0"), port(Port::Kind::Wired, 2, "enp3s0"),
                     port(Port::Kind::Wireless, 7, "wlan1"), port(Port::Kind::Modem, 8, "wwan0"),
                     port(Port::Kind::Bluetooth, 9, "bnep0"), port(Port::Kind::Bundle, 4, "br0")})),
                ElementsAre("Ethernet", "Wi-Fi", "LAN-br0", "LAN-enp4s0", "WLAN-wlan1",
                            "Modem-wwan0", "Bluetooth-bnep0", "Loopback"));
}

TEST(Port, ABundleIsNeverThePlainEthernet)
{
    EXPECT_THAT(namesOf(named({port(Port::Kind::Bundle, 2, "bond0")})), ElementsAre("LAN-bond0"));
}

TEST(Port, IsFoundByItsNameAndByItsDevice)
{
    const auto ports =
        named({port(Port::Kind::Wired, 2, "eth0"), port(Port::Kind::Wired, 3, "eth1"),
               port(Port::Kind::Wireless, 4, "Ethernet")});
    EXPECT_EQ(portNamed(ports, "eth1")->name, "LAN-eth1");
    EXPECT_EQ(portNamed(ports, "Ethernet")->device, "eth0");
    for (const char *unknown : {"", "eth", "ethernet", "Wi-Fi ", "(null)"})
        EXPECT_EQ(portNamed(ports, unknown), nullptr) << unknown;
}

TEST(Port, ADeviceNameThatAShellWouldReadIsNotPlain)
{
    for (const char *name :
         {"eth0", "enp3s0", "wlan0.5", "br-lan", "a:1", "x@y", "123456789012345"})
        EXPECT_TRUE(isPlainDeviceName(name)) << name;
    for (const char *name : {"", "$(id)", "a;id", "a|b", "`id`", "-rf", "*", "a>b", "é", "a b",
                             "1234567890123456", ".a", "a\n"})
        EXPECT_FALSE(isPlainDeviceName(name)) << name;
}

} // namespace
