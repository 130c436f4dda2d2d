#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// sudo COMMAND...: runs a command as root. Who is root already needs nobody's leave, and no system
/// has to have a sudo for that; for others the system's own is run.
///
/// Returns only when nothing could be run.
Outcome sudo(Arguments arguments, Output &output);

} // namespace velq::nettools
