#pragma once

#include "nettools/networkmanager/State.h"
#include "nettools/networksetup/Port.h"

#include <vector>

namespace velq::nettools
{

/// What a person would call a network port, named, the loopback last: physical devices, and those
/// made of software that NetworkManager manages itself; not the bridges and wire ends of containers
/// that it leaves alone.
std::vector<Port> portsOf(const State &state);

} // namespace velq::nettools
