#pragma once

#include "platform/linux/rtnetlink/Reader.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velq::rtnetlink
{

struct Link {
    uint32_t index = 0;
    uint32_t flags = 0;        ///< IFF_…
    uint16_t hardwareType = 0; ///< ARPHRD_…
    std::string name;
    std::string kind; ///< "veth", "wireguard", …; empty for a physical device
    std::vector<uint8_t> hardwareAddress;
    uint32_t mtu = 0;
    uint32_t master = 0; ///< index of the bridge or bond it is a port of, 0 for none

    /// Up, with a carrier: what is sent goes out.
    bool carries() const;
    bool isLoopback() const;
};

bool readLinks(Socket &socket, const Reader<Link> &reader);
/// The link with that index; nothing when it is gone.
std::optional<Link> linkAt(Socket &socket, uint32_t index);
/// The link of that name. An empty name is none's.
std::optional<Link> linkNamed(Socket &socket, std::string_view name);

/// Sets or clears IFF_UP. False, with errno set, when the kernel refuses: EPERM, ENODEV, or what
/// the driver has to say.
bool setLinkUp(Socket &socket, uint32_t index, bool up);
/// Sets how large a packet may be. Otherwise the same; EINVAL for a size that the device has not.
bool setLinkMtu(Socket &socket, uint32_t index, uint32_t mtu);

} // namespace velq::rtnetlink
