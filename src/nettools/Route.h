#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// route [-n] get DESTINATION: the route that packets to a host take, as route(8) of BSD systems
/// tells it. No packet is sent, but for the look-up of a name.
Outcome route(Arguments arguments, Output &output);

} // namespace velq::nettools
