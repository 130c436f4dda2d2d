#pragma once

#include "platform/linux/rtnetlink/InterfaceAddresses.h"
#include "platform/linux/rtnetlink/Links.h"
#include "platform/linux/rtnetlink/Neighbours.h"
#include "platform/linux/rtnetlink/Routes.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace velq::nettools
{

/// The kernel's tables as they were at one moment. Plain values; pointers to links stay good as
/// long as the tables are neither changed nor moved.
struct KernelTables {
    std::vector<rtnetlink::Link> links; ///< in the order of their indexes
    std::vector<rtnetlink::Route> routes;
    std::vector<rtnetlink::Neighbour> neighbours;
    std::vector<rtnetlink::InterfaceAddress> addresses;

    /// Null when there is none with that index: it may go between two readings.
    const rtnetlink::Link *link(uint32_t index) const;
    const rtnetlink::Link *linkNamed(std::string_view name) const;
    const rtnetlink::Link *loopback() const;
};

/// Links, and the IPv4 and IPv6 routes of all tables and neighbours. Nothing, with errno set, when
/// the kernel refuses.
std::optional<KernelTables> readRoutingState();

/// Links and their IPv4 and IPv6 addresses only; otherwise the same.
std::optional<KernelTables> readInterfaces();

/// Links and IPv4 neighbours only; otherwise the same.
std::optional<KernelTables> readNeighbourhood();

} // namespace velq::nettools
