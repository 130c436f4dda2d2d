#include "platform/linux/ReachabilityFlags.h"

#include "platform/linux/DefaultRoutes.h"
#include "platform/linux/UsableRoute.h"

#include <linux/rtnetlink.h>

#include <sys/socket.h>

namespace velq
{

namespace
{

using rtnetlink::Route;
using rtnetlink::Socket;

constexpr SCNetworkReachabilityFlags reachable = kSCNetworkReachabilityFlagsReachable;
constexpr SCNetworkReachabilityFlags direct = kSCNetworkReachabilityFlagsIsDirect;

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

// Nothing when the kernel did not answer.
std::optional<bool> someLinkHasANetwork()
{
    auto socket = Socket::open();
    if (!socket)
        return std::nullopt;
    bool found = false;
    const bool whole =
        rtnetlink::readRoutes(*socket, AF_INET, RTN_UNICAST, [&](const Route &route) {
            found = leadsToTheLocalLink(route);
            return found ? Socket::Visit::Stop : Socket::Visit::Continue;
        });
    return whole ? std::optional(found) : std::nullopt;
}

} // namespace

std::optional<SCNetworkReachabilityFlags> internetFlags()
{
    const auto overIPv4 = defaultRouteLeadsOut(AF_INET);
    if (overIPv4.value_or(false))
        return reachable;
    const auto overIPv6 = defaultRouteLeadsOut(AF_INET6);
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
    const auto local = someLinkHasANetwork();
    if (!local)
        return std::nullopt;
    return *local ? reachable | direct : internetFlags();
}

} // namespace velq
