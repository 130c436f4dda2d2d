#include "nettools/lib/Neighbours.h"

#include <algorithm>
#include <linux/neighbour.h>
#include <sys/socket.h>

namespace velq::nettools
{

namespace
{

// The kernel enters these by itself, without asking anyone. IPv6 groups are left out: samples do
// not show their hardware addresses.
NeighbourKind kindOfUnasked(const rtnetlink::Neighbour &neighbour)
{
    const auto &address = neighbour.hardwareAddress;
    if (neighbour.family != AF_INET || address.empty() || (address[0] & 1) == 0)
        return NeighbourKind::None;
    const bool everyone = std::ranges::all_of(address, [](uint8_t octet) { return octet == 0xff; });
    return everyone ? NeighbourKind::Everyone : NeighbourKind::Group;
}

} // namespace

NeighbourKind kindOf(const rtnetlink::Neighbour &neighbour)
{
    if ((neighbour.flags & NTF_PROXY) != 0)
        return NeighbourKind::None;
    if ((neighbour.state & NUD_NOARP) != 0)
        return kindOfUnasked(neighbour);
    if (neighbour.isConfirmed())
        return NeighbourKind::Host;
    if ((neighbour.state & (NUD_INCOMPLETE | NUD_FAILED)) != 0)
        return NeighbourKind::Unanswered;
    return NeighbourKind::None;
}

} // namespace velq::nettools
