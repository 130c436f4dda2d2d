#pragma once

#include "platform/linux/rtnetlink/Links.h"
#include "platform/linux/rtnetlink/Neighbours.h"

namespace velq::nettools
{

/// What an entry of the neighbour table stands for in a table of hosts.
enum class NeighbourKind {
    Host,       ///< has answered, or was entered by hand
    Unanswered, ///< is being asked for, or did not answer
    Group,      ///< the hardware address of a multicast group
    Everyone,   ///< the hardware address of a broadcast
    None,       ///< nothing that can be shown: the machine itself, a tunnel's end, a proxied host
};

NeighbourKind kindOf(const rtnetlink::Neighbour &neighbour);

} // namespace velq::nettools
