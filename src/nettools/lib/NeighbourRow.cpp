#include "nettools/lib/Addresses.h"
#include "nettools/lib/Neighbours.h"
#include "nettools/lib/RouteFlags.h"
#include "nettools/lib/RouteRow.h"

#include <algorithm>
#include <linux/neighbour.h>
#include <sys/socket.h>

namespace velq::nettools
{

namespace
{

using rtnetlink::Neighbour;

constexpr uint32_t cloned =
    flag::up | flag::host | flag::linkInfo | flag::wasCloned | flag::interfaceScope;

// BSD systems drop the address of a host that they have not heard from for so many seconds.
constexpr uint32_t lifetime = 1200;

uint32_t leaningFlags(const Gateways &gateways, const Neighbour &neighbour)
{
    const auto found = gateways.find({neighbour.address.bytes, neighbour.interface});
    if (found == gateways.end())
        return 0;
    return flag::interfaceReference | (found->second ? flag::router : 0);
}

void describeHost(const Gateways &gateways, const Neighbour &neighbour, RouteRow &row)
{
    if ((neighbour.state & NUD_PERMANENT) != 0) {
        row.flags = flag::up | flag::host | flag::linkInfo | flag::configured;
        return;
    }
    row.flags = cloned | leaningFlags(gateways, neighbour);
    if (neighbour.family == AF_INET)
        row.secondsLeft = static_cast<int>(lifetime - std::min(neighbour.confirmedAgo, lifetime));
}

void describe(NeighbourKind kind, const Gateways &gateways, const Neighbour &neighbour,
              RouteRow &row)
{
    row.flags = cloned;
    if (kind == NeighbourKind::Host)
        describeHost(gateways, neighbour, row);
    else if (kind == NeighbourKind::Group)
        row.flags |= flag::multicast;
    else if (kind == NeighbourKind::Everyone)
        row.flags |= flag::broadcast;
    const bool failed = neighbour.family == AF_INET && (neighbour.state & NUD_FAILED) != 0;
    if (kind == NeighbourKind::Everyone || failed)
        row.secondsLeft = 0;
}

} // namespace

void appendNeighbourRow(const KernelTables &tables, const Gateways &gateways,
                        const Neighbour &neighbour, std::vector<RouteRow> &rows)
{
    const rtnetlink::Link *link = tables.link(neighbour.interface);
    const NeighbourKind kind = kindOf(neighbour);
    if (link == nullptr || kind == NeighbourKind::None)
        return;

    RouteRow &row = rows.emplace_back();
    row.destination = neighbour.address;
    row.isHost = true;
    row.link = link;
    row.interfaceName = link->name;
    if (kind == NeighbourKind::Unanswered)
        row.gateway = linkGateway(*link);
    else
        appendHardwareAddress(row.gateway, neighbour.hardwareAddress);
    describe(kind, gateways, neighbour, row);
}

} // namespace velq::nettools
