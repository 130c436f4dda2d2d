#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace velq::nettools
{

/// A network device as a person sees it, with the name that its network service has.
struct Port {
    enum class Kind {
        Wired,
        Wireless,
        Modem,
        Bluetooth,
        Bundle, ///< made of other devices: a bridge, a bond, a virtual LAN
        Loopback,
    };

    Kind kind = Kind::Wired;
    uint32_t index = 0;          ///< the kernel's
    std::string device;          ///< "enp3s0"
    std::string name;            ///< "Ethernet"; given by namePorts()
    std::string hardwareAddress; ///< "02:00:5e:10:00:01"; empty when it has none
};

/// Puts the ports in the order of their indexes, loopback last, and names each.
///
/// The first wired port is "Ethernet", the first wireless one "Wi-Fi", the loopback "Loopback". All
/// others carry their device in the name: "LAN-enp4s0", "WLAN-wlan1", "Modem-wwan0",
/// "Bluetooth-bnep0". No name has a blank in it: names are pasted into command lines as they are.
void namePorts(std::vector<Port> &ports);

/// The port with that name, or else that device; null when there is none.
const Port *portNamed(const std::vector<Port> &ports, std::string_view name);

/// Whether a device name can stand in a command line and mean itself. The kernel takes nearly
/// anything, "$(reboot)" included; a device with such a name is left alone.
bool isPlainDeviceName(std::string_view name);

} // namespace velq::nettools
