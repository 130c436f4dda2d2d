#pragma once

#include "platform/linux/rtnetlink/Address.h"
#include "platform/linux/rtnetlink/Reader.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace velq::rtnetlink
{

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
    uint32_t mtu = 0;      ///< 0: that of the link
    uint8_t protocol = 0;  ///< who set it: RTPROT_KERNEL, RTPROT_STATIC, RTPROT_RA, …
    Address destination;   ///< unset for the default route
    Address preferredSource;
    std::vector<NextHop> nextHops; ///< at least one unless the route goes nowhere
};

/// Unicast, local and broadcast routes of all tables; `family` AF_INET, AF_INET6. `type` (RTN_…)
/// lets the kernel leave out all others; 0 for all. False when the answer did not arrive whole.
bool readRoutes(Socket &socket, uint8_t family, uint8_t type, const Reader<Route> &reader);

/// Those that lead anywhere: of prefix length 0. In a large table many times quicker.
bool readDefaultRoutes(Socket &socket, uint8_t family, const Reader<Route> &reader);

/// The route that a packet to `destination` would take now; nothing when it would take none.
std::optional<Route> routeTo(Socket &socket, const Address &destination);

/// The entry of the routing table that applies to `destination`: with its own prefix, and all of
/// its next hops.
std::optional<Route> matchingEntry(Socket &socket, const Address &destination);

/// The tables that the routing rules of `family` lead to.
bool readRuleTables(Socket &socket, uint8_t family, const Reader<uint32_t> &reader);

} // namespace velq::rtnetlink
