#pragma once

#include "platform/linux/rtnetlink/Socket.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velq::rtnetlink
{

/// The kernel's tables as plain records: read, never cached. Every function is synchronous, sends
/// no packet, and may be called from any thread with a socket of that thread's own. Constants named
/// in the records are those of rtnetlink(7).

/// An IPv4 or IPv6 address. `family` is AF_INET (4 bytes used), AF_INET6 (16 bytes) or AF_UNSPEC:
/// none.
struct Address {
    uint8_t family = 0;
    std::array<uint8_t, 16> bytes{};

    bool isSet() const { return family != 0; }
    size_t size() const;
    /// In numbers, as inet_ntop(3) writes it; empty when there is none.
    std::string text() const;
    bool operator==(const Address &) const = default;
};

struct NextHop {
    uint32_t interface = 0; ///< index of the link, 0 for none
    uint8_t flags = 0;      ///< RTNH_F_…
    Address gateway;        ///< unset when the destination is on the link itself
};

struct Route {
    uint8_t family = 0;
    uint8_t prefixLength = 0;
    uint8_t type = 0;      ///< RTN_UNICAST, RTN_LOCAL, RTN_BROADCAST, …
    uint8_t scope = 0;     ///< RT_SCOPE_…
    uint32_t table = 0;    ///< RT_TABLE_MAIN, RT_TABLE_LOCAL, …
    uint32_t flags = 0;    ///< RTM_F_… and RTNH_F_…
    uint32_t priority = 0; ///< metric; the lower one wins
    uint8_t protocol = 0;  ///< who set it: RTPROT_KERNEL, RTPROT_STATIC, RTPROT_RA, …
    Address destination;   ///< unset for the default route
    Address preferredSource;
    std::vector<NextHop> nextHops; ///< at least one unless the route goes nowhere
};

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

struct Neighbour {
    uint8_t family = 0;
    uint32_t interface = 0;
    uint16_t state = 0; ///< NUD_…
    uint8_t flags = 0;  ///< NTF_…
    Address address;
    std::vector<uint8_t> hardwareAddress; ///< empty when the kernel has none
    uint32_t confirmedAgo = 0;            ///< seconds since it was last heard from

    /// The kernel has heard from it: it has a hardware address and is not being asked for.
    bool isConfirmed() const;
};

template <typename Record> using Reader = std::function<Socket::Visit(const Record &)>;

/// Unicast, local and broadcast routes of all tables; `family` AF_INET, AF_INET6. `type` (RTN_…)
/// lets the kernel leave out all others; 0 for all. False when the answer did not arrive whole.
bool readRoutes(Socket &socket, uint8_t family, uint8_t type, const Reader<Route> &reader);

/// Those that lead anywhere: of prefix length 0. In a large table many times quicker.
bool readDefaultRoutes(Socket &socket, uint8_t family, const Reader<Route> &reader);

/// The route that a packet to `destination` would take now; nothing when it would take none.
std::optional<Route> routeTo(Socket &socket, const Address &destination);

/// The tables that the routing rules of `family` lead to.
bool readRuleTables(Socket &socket, uint8_t family, const Reader<uint32_t> &reader);

/// The scope (RT_SCOPE_…) of each address of `family`, of all links.
bool readAddressScopes(Socket &socket, uint8_t family, const Reader<uint8_t> &reader);

bool readLinks(Socket &socket, const Reader<Link> &reader);
/// The link with that index; nothing when it is gone.
std::optional<Link> linkAt(Socket &socket, uint32_t index);

/// The neighbour table of `family`, of all links.
bool readNeighbours(Socket &socket, uint8_t family, const Reader<Neighbour> &reader);

} // namespace velq::rtnetlink
