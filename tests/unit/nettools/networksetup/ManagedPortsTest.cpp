#include "nettools/networkmanager/ManagedPorts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace
{

using namespace velq::nettools;
using testing::ElementsAre;

// Names that no kernel here has: nothing is known of them but what is said.
Device device(uint32_t type, const std::string &interface, bool managed = true)
{
    Device result;
    result.type = type;
    result.interface = interface;
    result.managed = managed;
    return result;
}

std::vector<std::string> namesIn(std::vector<Device> devices)
{
    State state;
    state.devices = std::move(devices);
    std::vector<std::string> names;
    for (const Port &port : portsOf(state))
        names.push_back(port.name);
    return names;
}

TEST(ManagedPorts, HardwareIsAPortManagedOrNot)
{
    EXPECT_THAT(namesIn({device(Device::Ethernet, "nope0", false), device(Device::WiFi, "nope1"),
                         device(Device::Modem, "nope2"), device(Device::Bluetooth, "nope3")}),
                ElementsAre("Ethernet", "Wi-Fi", "Modem-nope2", "Bluetooth-nope3", "Loopback"));
}

TEST(ManagedPorts, WhatIsMadeOfSoftwareIsOneOnlyWhenManaged)
{
    Device external = device(Device::Bridge, "docker9");
    external.external = true;
    EXPECT_THAT(namesIn({device(Device::Veth, "veth9", false), external,
                         device(Device::Bridge, "br9"), device(Device::Veth, "wire9")}),
                ElementsAre("LAN-br9", "Ethernet", "Loopback"));
}

TEST(ManagedPorts, TunnelsAndUnspeakableNamesAreNone)
{
    constexpr uint32_t tunnel = 16;
    EXPECT_THAT(namesIn({device(tunnel, "tun9"), device(Device::Ethernet, "$(reboot)")}),
                ElementsAre("Loopback"));
}

} // namespace
