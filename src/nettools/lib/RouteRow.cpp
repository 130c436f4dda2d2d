#include "nettools/lib/RouteRow.h"

#include "nettools/lib/Addresses.h"
#include "nettools/lib/RouteFlags.h"

#include <linux/if.h>
#include <linux/if_arp.h>
#include <linux/rtnetlink.h>

namespace velq::nettools
{

namespace
{

using rtnetlink::Link;
using rtnetlink::NextHop;
using rtnetlink::Route;

bool isSetByRoutingDaemon(uint8_t protocol)
{
    switch (protocol) {
    case RTPROT_GATED:
    case RTPROT_MRT:
    case RTPROT_ZEBRA:
    case RTPROT_BIRD:
    case RTPROT_XORP:
    case RTPROT_MROUTED:
    case RTPROT_BABEL:
    case RTPROT_OPENR:
    case RTPROT_BGP:
    case RTPROT_ISIS:
    case RTPROT_OSPF:
    case RTPROT_RIP:
    case RTPROT_EIGRP:
        return true;
    default:
        return false;
    }
}

// The routes that come with an IPv4 address count as configured, those of IPv6 do not: samples show
// "UCS" for the one and "UC" for the other.
uint32_t originFlags(const Route &route)
{
    if (route.protocol == RTPROT_REDIRECT)
        return flag::dynamic;
    if (isSetByRoutingDaemon(route.protocol))
        return flag::protocol1;
    const bool learned = route.protocol == RTPROT_KERNEL || route.protocol == RTPROT_RA;
    return route.family == AF_INET6 && learned ? 0 : flag::configured;
}

bool isFullLength(const Route &route)
{
    return route.prefixLength == (route.family == AF_INET ? 32 : 128);
}

RouteRow rowOf(const Route &route, const Link &link)
{
    RouteRow row;
    row.destination = route.destination;
    row.prefixLength = route.prefixLength;
    row.priority = route.priority;
    row.link = &link;
    row.interfaceName = link.name;
    row.flags = flag::up;
    if (isMulticast(route.destination))
        row.flags |= flag::multicast;
    if (route.family == AF_INET6
        && (isLinkScoped(route.destination) || isMulticast(route.destination)))
        row.flags |= flag::interfaceScope;
    return row;
}

// Hosts are found by asking for their hardware address: a local network, not a tunnel.
bool resolvesHosts(const Link &link)
{
    return (link.flags & (IFF_LOOPBACK | IFF_NOARP | IFF_POINTOPOINT)) == 0;
}

// The IPv4 rows of a local network carry the mark of an expired entry in samples; those of tunnels,
// of the loopback and of IPv6 carry none.
void markAsLocalNetwork(const Route &route, const Link &link, RouteRow &row)
{
    if (route.family == AF_INET && resolvesHosts(link))
        row.secondsLeft = 0;
}

std::string loopbackGateway(const Route &route)
{
    return route.family == AF_INET ? "127.0.0.1" : "::1";
}

void makeIndirect(const Route &route, const NextHop &hop, RouteRow &row)
{
    appendAddress(row.gateway, hop.gateway, zoneOf(hop.gateway, *row.link));
    row.isHost = isFullLength(route);
    row.flags |=
        flag::gateway | originFlags(route) | (row.isHost ? flag::host : flag::protocolCloning);
}

void makeDirect(const Route &route, RouteRow &row)
{
    const bool loopback = row.link->isLoopback();
    row.gateway = loopback ? loopbackGateway(route) : linkGateway(*row.link);
    row.isHost = loopback && isFullLength(route);
    if (row.isHost)
        row.flags |= flag::host | (route.family == AF_INET6 ? flag::linkInfo : 0);
    else
        row.flags |= flag::cloning | originFlags(route);
    markAsLocalNetwork(route, *row.link, row);
}

RouteRow unicastRow(const Route &route, const NextHop &hop, const Link &link)
{
    RouteRow row = rowOf(route, link);
    if (hop.gateway.isSet())
        makeIndirect(route, hop, row);
    else
        makeDirect(route, row);
    if (!route.destination.isSet())
        row.flags |= flag::global;
    if ((hop.flags & RTNH_F_DEAD) != 0)
        row.flags &= ~flag::up;
    return row;
}

// An own IPv4 address is a network of one host on its link.
RouteRow ownAddressRow(const KernelTables &tables, const Route &route, const Link &link)
{
    RouteRow row = rowOf(route, link);
    makeDirect(route, row);
    if (route.family == AF_INET || link.isLoopback())
        return row;
    row.isHost = true;
    row.flags = (row.flags & flag::interfaceScope) | flag::up | flag::host | flag::linkInfo;
    if (const Link *loopback = tables.loopback())
        row.interfaceName = loopback->name;
    if (link.hardwareType == ARPHRD_ETHER && !link.hardwareAddress.empty()) {
        row.gateway.clear();
        appendHardwareAddress(row.gateway, link.hardwareAddress);
    }
    return row;
}

RouteRow broadcastRow(const Route &route, const Link &link)
{
    RouteRow row = rowOf(route, link);
    row.isHost = true;
    row.gateway =
        link.hardwareType == ARPHRD_ETHER ? std::string("ff:ff:ff:ff:ff:ff") : linkGateway(link);
    row.flags = flag::up | flag::host | flag::linkInfo | flag::wasCloned | flag::broadcast
        | flag::interfaceScope;
    row.secondsLeft = 0;
    return row;
}

RouteRow refusingRow(const Route &route, const Link &loopback)
{
    RouteRow row = rowOf(route, loopback);
    row.isHost = isFullLength(route);
    row.gateway = loopbackGateway(route);
    row.flags |= flag::gateway | flag::configured
        | (route.type == RTN_BLACKHOLE ? flag::blackhole : flag::reject)
        | (row.isHost ? flag::host : 0);
    return row;
}

void appendHopRow(const KernelTables &tables, const Route &route, const NextHop &hop,
                  std::vector<RouteRow> &rows)
{
    const Link *link = tables.link(hop.interface);
    if (link == nullptr)
        return;
    if (route.type == RTN_UNICAST)
        rows.push_back(unicastRow(route, hop, *link));
    else if (route.type == RTN_LOCAL)
        rows.push_back(ownAddressRow(tables, route, *link));
    else if (route.type == RTN_MULTICAST)
        rows.push_back(unicastRow(route, {hop.interface, hop.flags, {}}, *link));
    else if (route.type == RTN_BROADCAST && !link->isLoopback())
        rows.push_back(broadcastRow(route, *link));
}

} // namespace

std::string linkGateway(const Link &link)
{
    return "link#" + std::to_string(link.index);
}

std::string_view zoneOf(const rtnetlink::Address &address, const Link &link)
{
    return isLinkScoped(address) ? std::string_view(link.name) : std::string_view();
}

void appendRouteRows(const KernelTables &tables, const Route &route, std::vector<RouteRow> &rows)
{
    const bool shown = route.table == RT_TABLE_MAIN || route.table == RT_TABLE_LOCAL;
    if (!shown || (route.flags & RTM_F_CLONED) != 0)
        return;
    if (route.type == RTN_BLACKHOLE || route.type == RTN_UNREACHABLE
        || route.type == RTN_PROHIBIT) {
        if (const Link *loopback = tables.loopback())
            rows.push_back(refusingRow(route, *loopback));
        return;
    }
    for (const NextHop &hop : route.nextHops)
        appendHopRow(tables, route, hop, rows);
}

} // namespace velq::nettools
