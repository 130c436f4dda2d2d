#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// `netstat -nr`: the routing tables of the kernel, IPv4 and then IPv6, in the form of the BSD
/// netstat(1). A family without routes has no section. Hosts of the local network that have
/// answered appear with their hardware address as the gateway.
Outcome netstat(Arguments arguments, Output &output);

} // namespace velq::nettools
