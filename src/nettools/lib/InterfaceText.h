#pragma once

#include "platform/linux/rtnetlink/InterfaceAddresses.h"
#include "platform/linux/rtnetlink/Links.h"

#include <span>
#include <string>

namespace velq::nettools
{

/// Appends the paragraph that ifconfig(8) of BSD systems prints about an interface: flags and MTU,
/// hardware address, addresses, medium, and whether the link is "active". The layout, blanks at the
/// ends of lines included, was read off output in public documentation.
///
/// Of `addresses` those of that link are taken. An interface that has no cable to be pulled (a
/// loopback, a tunnel) has no medium and no status.
void appendInterface(std::string &out, const rtnetlink::Link &link,
                     std::span<const rtnetlink::InterfaceAddress> addresses);

} // namespace velq::nettools
