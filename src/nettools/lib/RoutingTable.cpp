#include "nettools/lib/RoutingTable.h"

#include "nettools/lib/RouteFlags.h"

#include <algorithm>
#include <tuple>

namespace velq::nettools
{

namespace
{

Gateways gatewaysOf(const KernelTables &tables)
{
    Gateways gateways;
    for (const rtnetlink::Route &route : tables.routes) {
        for (const rtnetlink::NextHop &hop : route.nextHops) {
            if (hop.gateway.isSet())
                gateways[{hop.gateway.bytes, hop.interface}] |= !route.destination.isSet();
        }
    }
    return gateways;
}

int place(const RouteRow &row)
{
    return row.isHost ? std::numeric_limits<int>::max() : row.prefixLength;
}

// Links that each have their own route to one place are ordered among themselves; of routes that
// compete for a place the kernel's order is kept.
uint32_t linkPlace(const RouteRow &row)
{
    return (row.flags & flag::interfaceScope) != 0 ? row.link->index : 0;
}

bool comesBefore(const RouteRow &left, const RouteRow &right)
{
    if (left.destination.bytes != right.destination.bytes)
        return left.destination.bytes < right.destination.bytes;
    return std::tuple(place(left), left.priority, linkPlace(left))
        < std::tuple(place(right), right.priority, linkPlace(right));
}

bool leadToTheSamePlace(const RouteRow &left, const RouteRow &right)
{
    return left.destination == right.destination && place(left) == place(right);
}

// Some kernels have the loopback's address in two tables, and a broadcast's hardware address can be
// known by a route and by a neighbour.
bool areTheSame(const RouteRow &left, const RouteRow &right)
{
    return leadToTheSamePlace(left, right) && left.link == right.link
        && left.gateway == right.gateway;
}

void scopeAllButTheFirst(std::vector<RouteRow> &rows)
{
    for (size_t i = 1; i < rows.size(); ++i) {
        if ((rows[i].flags & flag::linkInfo) == 0 && leadToTheSamePlace(rows[i - 1], rows[i]))
            rows[i].flags |= flag::interfaceScope;
    }
}

} // namespace

std::vector<RouteRow> routingTable(const KernelTables &tables, uint8_t family)
{
    std::vector<RouteRow> rows;
    rows.reserve(tables.routes.size() + tables.neighbours.size());
    for (const rtnetlink::Route &route : tables.routes) {
        if (route.family == family)
            appendRouteRows(tables, route, rows);
    }
    const Gateways gateways = gatewaysOf(tables);
    for (const rtnetlink::Neighbour &neighbour : tables.neighbours) {
        if (neighbour.family == family)
            appendNeighbourRow(tables, gateways, neighbour, rows);
    }
    std::ranges::stable_sort(rows, comesBefore);
    rows.erase(std::unique(rows.begin(), rows.end(), areTheSame), rows.end());
    scopeAllButTheFirst(rows);
    return rows;
}

} // namespace velq::nettools
