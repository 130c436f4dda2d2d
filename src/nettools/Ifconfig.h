#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// ifconfig [-a] | DEVICE [up|down]: shows interfaces as ifconfig(8) of BSD systems does, from the
/// kernel's tables, or switches one on or off.
Outcome ifconfig(Arguments arguments, Output &output);

} // namespace velq::nettools
