#pragma once

#include "platform/linux/rtnetlink/Routes.h"

#include <string>
#include <string_view>

namespace velq::nettools
{

/// What "route get" says of a destination.
struct RouteAnswer {
    std::string_view destination;  ///< as it is to be shown
    const rtnetlink::Route &entry; ///< the entry of the routing table that applies
    const rtnetlink::NextHop &hop; ///< the one that is taken
    std::string_view interfaceName;
    uint32_t mtu = 0; ///< of the route or, where it has none, of the link
};

/// Appends the paragraph in the layout of route(8) of BSD systems, read off output in public
/// documentation. Gateways are told in numbers, whatever names they have: readers compare them, and
/// a name server that does not answer must not hold up the answer.
void appendRouteAnswer(std::string &out, const RouteAnswer &answer);

} // namespace velq::nettools
