#include "platform/linux/ReachabilityFlags.h"

#include <linux/rtnetlink.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <sys/socket.h>

namespace velq
{

namespace
{

using rtnetlink::Link;
using rtnetlink::NextHop;
using rtnetlink::Route;
using rtnetlink::Socket;

constexpr SCNetworkReachabilityFlags reachable = kSCNetworkReachabilityFlagsReachable;
constexpr SCNetworkReachabilityFlags direct = kSCNetworkReachabilityFlagsIsDirect;

bool isTunnel(const Link &link)
{
    static constexpr std::array<std::string_view, 12> kinds{
        "tun",    "wireguard", "ipip", "sit",  "gre",    "ip6gre",
        "ip6tnl", "vti",       "vti6", "xfrm", "gretap", "ip6gretap",
    };
    return std::ranges::find(kinds, link.kind) != kinds.end();
}

bool carriesByItself(const Link &link)
{
    return link.carries() && !link.isLoopback() && !isTunnel(link);
}

bool someLinkCarriesByItself()
{
    bool found = false;
    auto socket = Socket::open();
    if (!socket)
        return false;
    (void)rtnetlink::readLinks(*socket, [&](const Link &link) {
        found = carriesByItself(link);
        return found ? Socket::Visit::Stop : Socket::Visit::Continue;
    });
    return found;
}

bool isUsable(const NextHop &hop, Socket &socket)
{
    // The link knows of its carrier before the kernel has marked its routes.
    if ((hop.flags & RTNH_F_DEAD) != 0)
        return false;
    const auto link = rtnetlink::linkAt(socket, hop.interface);
    return link && link->carries() && (!isTunnel(*link) || someLinkCarriesByItself());
}

bool isUsable(const Route &route)
{
    auto socket = Socket::open();
    return socket && std::ranges::any_of(route.nextHops, [&](const NextHop &hop) {
               return isUsable(hop, *socket);
           });
}

bool leadsToTheInternet(const Route &route)
{
    return route.prefixLength == 0 && route.type == RTN_UNICAST && route.table != RT_TABLE_LOCAL
        && isUsable(route);
}

bool leadsToTheLocalLink(const Route &route)
{
    const bool ownNetwork = route.prefixLength != 0 && route.scope == RT_SCOPE_LINK
        && route.table == RT_TABLE_MAIN && route.nextHops.size() == 1;
    if (!ownNetwork)
        return false;
    auto socket = Socket::open();
    const auto link =
        socket ? rtnetlink::linkAt(*socket, route.nextHops.front().interface) : std::nullopt;
    return link && carriesByItself(*link);
}

using ReadRoutes = decltype(&rtnetlink::readRoutes);

// Nothing when the kernel did not answer, else whether a route of the family passes the test.
std::optional<bool> someRoute(ReadRoutes read, uint8_t family, bool (*passes)(const Route &))
{
    auto socket = Socket::open();
    if (!socket)
        return std::nullopt;
    bool found = false;
    const bool whole = read(*socket, family, RTN_UNICAST, [&](const Route &route) {
        found = passes(route);
        return found ? Socket::Visit::Stop : Socket::Visit::Continue;
    });
    return whole ? std::optional(found) : std::nullopt;
}

} // namespace

std::optional<SCNetworkReachabilityFlags> internetFlags()
{
    const auto overIPv4 = someRoute(rtnetlink::readDefaultRoutes, AF_INET, leadsToTheInternet);
    if (overIPv4.value_or(false))
        return reachable;
    const auto overIPv6 = someRoute(rtnetlink::readDefaultRoutes, AF_INET6, leadsToTheInternet);
    if (overIPv6.value_or(false))
        return reachable;
    // A kernel without IPv6 does not answer for it; that alone is no failure.
    return overIPv4 ? std::optional(SCNetworkReachabilityFlags{0}) : std::nullopt;
}

std::optional<SCNetworkReachabilityFlags> addressFlags(const rtnetlink::Address &address)
{
    auto socket = Socket::open();
    if (!socket)
        return std::nullopt;
    const auto route = rtnetlink::routeTo(*socket, address);
    if (!route || !isUsable(*route))
        return 0;
    return route->nextHops.front().gateway.isSet() ? reachable : reachable | direct;
}

std::optional<SCNetworkReachabilityFlags> localLinkFlags()
{
    const auto local = someRoute(rtnetlink::readRoutes, AF_INET, leadsToTheLocalLink);
    if (!local)
        return std::nullopt;
    return *local ? reachable | direct : internetFlags();
}

} // namespace velq
