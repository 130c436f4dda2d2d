#include "platform/linux/UsableRoute.h"

#include <linux/rtnetlink.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace velq
{

namespace
{

using rtnetlink::Link;
using rtnetlink::NextHop;
using rtnetlink::Route;
using rtnetlink::Socket;

bool isTunnel(const Link &link)
{
    static constexpr std::array<std::string_view, 12> kinds{
        "tun",    "wireguard", "ipip", "sit",  "gre",    "ip6gre",
        "ip6tnl", "vti",       "vti6", "xfrm", "gretap", "ip6gretap",
    };
    return std::ranges::find(kinds, link.kind) != kinds.end();
}

// A bridge has a carrier as soon as one container runs; its outside port counts for itself.
bool connectsContainers(const Link &link)
{
    return link.kind == "bridge" || (link.kind == "veth" && link.master != 0);
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

} // namespace

bool carriesByItself(const Link &link)
{
    return link.carries() && !link.isLoopback() && !isTunnel(link) && !connectsContainers(link);
}

bool isUsable(const Route &route)
{
    auto socket = Socket::open();
    return socket && std::ranges::any_of(route.nextHops, [&](const NextHop &hop) {
               return isUsable(hop, *socket);
           });
}

} // namespace velq
