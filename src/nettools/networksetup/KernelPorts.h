#pragma once

#include "nettools/networksetup/Port.h"
#include "platform/linux/rtnetlink/Links.h"

#include <vector>

namespace velq::nettools
{

/// What a person would call a network port, named, the loopback last: devices with hardware behind
/// them, and a wire's end that is no port of a bridge, as containers have it.
std::vector<Port> portsOf(const std::vector<rtnetlink::Link> &links);

} // namespace velq::nettools
