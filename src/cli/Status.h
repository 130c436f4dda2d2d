#pragma once

#include "cli/Report.h"

namespace velq::cli
{

/// Whether the network is usable: "connected", and "interface", the one that the traffic takes;
/// null when there is none. Sends no packet.
Report status();

} // namespace velq::cli
