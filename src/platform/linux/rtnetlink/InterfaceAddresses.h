#pragma once

#include "platform/linux/rtnetlink/Address.h"
#include "platform/linux/rtnetlink/Reader.h"

#include <cstdint>

namespace velq::rtnetlink
{

/// An address that a link has.
struct InterfaceAddress {
    uint8_t family = 0;
    uint8_t prefixLength = 0;
    uint8_t scope = 0;      ///< RT_SCOPE_…
    uint32_t interface = 0; ///< index of the link
    uint32_t flags = 0;     ///< IFA_F_…
    Address local;          ///< the link's own
    Address peer;           ///< the other end's, on a link with two ends; else unset
    Address broadcast;
};

/// The addresses of `family`, of all links, in the kernel's order.
bool readInterfaceAddresses(Socket &socket, uint8_t family, const Reader<InterfaceAddress> &reader);

} // namespace velq::rtnetlink
