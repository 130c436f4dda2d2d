#include "nettools/networkmanager/ManagedPorts.h"

#include <net/if.h>

#include <algorithm>
#include <array>
#include <optional>
#include <unistd.h>
#include <utility>

namespace velq::nettools
{

namespace
{

struct TypeOfPort {
    uint32_t type;
    Port::Kind kind;
    bool physical;
};

constexpr std::array types = std::to_array<TypeOfPort>({
    {Device::Ethernet, Port::Kind::Wired, true},
    {Device::WiFi, Port::Kind::Wireless, true},
    {Device::Bluetooth, Port::Kind::Bluetooth, true},
    {Device::Modem, Port::Kind::Modem, true},
    {Device::InfiniBand, Port::Kind::Bundle, true},
    {Device::Veth, Port::Kind::Wired, false},
    {Device::Bond, Port::Kind::Bundle, false},
    {Device::Bridge, Port::Kind::Bundle, false},
    {Device::Dummy, Port::Kind::Bundle, false},
    {Device::MacVlan, Port::Kind::Bundle, false},
    {Device::Team, Port::Kind::Bundle, false},
    {Device::Vlan, Port::Kind::Bundle, false},
});

// Virtual machines' adapters look like Ethernet to NetworkManager, but no hardware is behind them.
bool isKnownToBeVirtual(const std::string &interface)
{
    const std::string folder = "/sys/class/net/" + interface;
    return access(folder.c_str(), F_OK) == 0 && access((folder + "/device").c_str(), F_OK) != 0;
}

// While networking is switched off, NetworkManager manages nothing, and does not say what it would.
bool wouldBeManaged(const State &state, const Device &device)
{
    return !state.networking && device.type == Device::Veth
        && access(("/sys/class/net/" + device.interface + "/master").c_str(), F_OK) != 0;
}

std::optional<Port> portOf(const State &state, const Device &device)
{
    const auto *found = std::ranges::find(types, device.type, &TypeOfPort::type);
    if (found == types.end() || !isPlainDeviceName(device.interface))
        return std::nullopt;
    const bool ours = (device.managed && !device.external) || wouldBeManaged(state, device);
    if (!ours && (!found->physical || isKnownToBeVirtual(device.interface)))
        return std::nullopt;
    return Port{found->kind, if_nametoindex(device.interface.c_str()), device.interface, "",
                device.hardwareAddress};
}

Port loopback()
{
    return {Port::Kind::Loopback, if_nametoindex("lo"), "lo", "", "00:00:00:00:00:00"};
}

} // namespace

std::vector<Port> portsOf(const State &state)
{
    std::vector<Port> ports;
    for (const Device &device : state.devices) {
        if (auto port = portOf(state, device))
            ports.push_back(*std::move(port));
    }
    ports.push_back(loopback());
    namePorts(ports);
    return ports;
}

} // namespace velq::nettools
