#include "platform/linux/DefaultRoutes.h"

#include "platform/linux/UsableRoute.h"
#include "platform/linux/rtnetlink/InterfaceAddresses.h"

#include <linux/rtnetlink.h>

#include <algorithm>
#include <sys/socket.h>

namespace velq
{

namespace
{

using rtnetlink::Route;
using rtnetlink::Socket;

// A table that changes while it is read comes torn; the next attempt nearly always comes whole.
constexpr int attempts = 5;

std::optional<std::vector<Route>> defaultRoutes(uint8_t family)
{
    for (int attempt = 0; attempt < attempts; ++attempt) {
        std::vector<Route> routes;
        auto socket = Socket::open();
        if (!socket)
            return std::nullopt;
        const auto keep = [&](const Route &route) {
            routes.push_back(route);
            return Socket::Visit::Continue;
        };
        if (rtnetlink::readDefaultRoutes(*socket, family, keep))
            return routes;
    }
    return std::nullopt;
}

bool refuses(const Route &route)
{
    return route.type == RTN_UNREACHABLE || route.type == RTN_PROHIBIT
        || route.type == RTN_BLACKHOLE;
}

bool ruleLeadsTo(uint32_t table, uint8_t family)
{
    if (table == RT_TABLE_MAIN)
        return true;
    auto socket = Socket::open();
    bool found = false;
    return socket
        && rtnetlink::readRuleTables(*socket, family,
                                     [&](const uint32_t &each) {
                                         found = found || each == table;
                                         return Socket::Visit::Continue;
                                     })
        && found;
}

bool hasAddressBeyondItsLink(uint8_t family)
{
    auto socket = Socket::open();
    bool found = false;
    return socket
        && rtnetlink::readInterfaceAddresses(*socket, family,
                                             [&](const rtnetlink::InterfaceAddress &address) {
                                                 found =
                                                     found || address.scope == RT_SCOPE_UNIVERSE;
                                                 return Socket::Visit::Continue;
                                             })
        && found;
}

bool leadsOut(const Route &route, const std::vector<Route> &all)
{
    const bool refused = std::ranges::any_of(all, [&](const Route &other) {
        return refuses(other) && other.table == route.table && other.priority < route.priority;
    });
    return route.type == RTN_UNICAST && route.table != RT_TABLE_LOCAL && !refused
        && ruleLeadsTo(route.table, route.family) && isUsable(route);
}

} // namespace

std::optional<bool> defaultRouteLeadsOut(uint8_t family)
{
    const auto routes = defaultRoutes(family);
    if (!routes)
        return std::nullopt;
    const bool found =
        std::ranges::any_of(*routes, [&](const Route &route) { return leadsOut(route, *routes); });
    // A router may announce itself before it has given out any address.
    return found && (family != AF_INET6 || hasAddressBeyondItsLink(family));
}

} // namespace velq
