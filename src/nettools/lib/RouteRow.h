#pragma once

#include "nettools/lib/Kernel.h"

#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velq::nettools
{

/// One line of the routing table, before it is text. Names and the link belong to the KernelTables
/// that the row was made from.
struct RouteRow {
    rtnetlink::Address destination; ///< unset for the default route
    uint8_t prefixLength = 0;
    bool isHost = false; ///< printed as an address, without a prefix
    uint32_t flags = 0;  ///< an or of flag::…
    std::string gateway;
    const rtnetlink::Link *link = nullptr;
    std::string_view interfaceName; ///< not always the link's: own addresses are the loopback's
    std::optional<int> secondsLeft; ///< none: does not expire; 0 or less: has expired
    uint32_t priority = std::numeric_limits<uint32_t>::max();
};

/// "link#N", what is reached on the link itself.
std::string linkGateway(const rtnetlink::Link &link);

/// The name that `address` needs behind it on `link`; empty when it needs none.
std::string_view zoneOf(const rtnetlink::Address &address, const rtnetlink::Link &link);

/// The rows of a route: one a next hop, none for kinds that BSD tables do not show and for routes
/// outside the main and local tables.
void appendRouteRows(const KernelTables &tables, const rtnetlink::Route &route,
                     std::vector<RouteRow> &rows);

/// The gateways that routes lean on, by address and link; true for those of default routes.
using Gateways = std::map<std::pair<std::array<uint8_t, 16>, uint32_t>, bool>;

/// The row of a neighbour, if it has one. One that has not answered leads to "link#N".
void appendNeighbourRow(const KernelTables &tables, const Gateways &gateways,
                        const rtnetlink::Neighbour &neighbour, std::vector<RouteRow> &rows);

} // namespace velq::nettools
