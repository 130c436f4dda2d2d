#pragma once

#include "nettools/networkmanager/Value.h"

#include <cstdint>
#include <string>
#include <vector>

namespace velq::nettools
{

/// A device as NetworkManager has it; numbers and paths are those of its D-Bus interface.
struct Device {
    // NM_DEVICE_TYPE_…
    enum Type : uint32_t {
        Ethernet = 1,
        WiFi = 2,
        Bluetooth = 5,
        Modem = 8,
        InfiniBand = 9,
        Bond = 10,
        Vlan = 11,
        Bridge = 13,
        Team = 15,
        MacVlan = 18,
        Veth = 20,
        Dummy = 22,
    };
    // NM_DEVICE_STATE_…
    enum Stage : uint32_t {
        Unmanaged = 10,
        Unavailable = 20,
        Disconnected = 30,
        Prepare = 40,
        IpConfig = 70,
        Activated = 100,
        Deactivating = 110,
        Failed = 120,
    };

    std::string path;
    std::string interface;
    uint32_t type = 0;
    uint32_t stage = 0;
    bool managed = false;
    bool autoconnects = true;
    std::string hardwareAddress; ///< in lower case
    uint32_t mtu = 0;
    std::string activation; ///< what goes on on it; empty for nothing
    std::string profile;    ///< in use; empty when there is none of NetworkManager's own
    bool external = false;  ///< somebody else set it up, NetworkManager looks on
    std::vector<std::string> available;    ///< profiles that could be used now
    bool carrier = true;                   ///< false when it is known that no cable is in
    std::string lease;                     ///< the IPv4 address that DHCP gave; empty for none
    std::vector<std::string> leaseServers; ///< the name servers that DHCP gave with it
    int64_t leasedAt = 0;                  ///< when, in whole seconds since 1970; 0 when unknown
    Value ip4;                             ///< properties of what it got, or nothing
    Value ip6;
    Value accessPoint;    ///< of the Wi-Fi network that it is in, or nothing
    uint32_t bitrate = 0; ///< of Wi-Fi, in kilobits a second

    bool is(Stage wanted) const { return stage == wanted; }
    /// An activation is on its way or done.
    bool isInUse() const { return stage >= Prepare && stage <= Activated; }
};

/// NetworkManager at one moment.
struct State {
    bool networking = true;
    bool wireless = true;
    bool wirelessHardware = true;
    bool mobile = true;
    bool mobileHardware = true;
    std::vector<Device> devices;
    std::vector<std::string> profiles;    ///< all there are
    std::vector<std::string> activations; ///< all that go on, on any device

    /// Null when it has gone.
    const Device *device(std::string_view path) const;

    /// From the answer to ObjectManager's GetManagedObjects. Throws BusError.
    static State from(sd_bus_message *answer);
};

} // namespace velq::nettools
