#pragma once

#include "platform/linux/rtnetlink/Address.h"
#include "platform/linux/rtnetlink/Reader.h"

#include <cstdint>
#include <vector>

namespace velq::rtnetlink
{

struct Neighbour {
    uint8_t family = 0;
    uint32_t interface = 0;
    uint16_t state = 0; ///< NUD_…
    uint8_t flags = 0;  ///< NTF_…
    Address address;
    std::vector<uint8_t> hardwareAddress; ///< empty when the kernel has none
    uint32_t confirmedAgo = 0;            ///< seconds since it was last heard from

    /// The kernel has heard from it: it has a hardware address and is not being asked for.
    bool isConfirmed() const;
};

/// The neighbour table of `family`, of all links.
bool readNeighbours(Socket &socket, uint8_t family, const Reader<Neighbour> &reader);

} // namespace velq::rtnetlink
