#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// `launchctl load FILE`, `launchctl unload FILE`: an agent's property list ("KeepAlive", "Label",
/// "Version", "Program") as the service "<Label>.service" of the caller's systemd, which for root
/// is the system's. The file stays where it is, and the agent is loaded again at the next log-in as
/// long as it is there. `-w` is accepted and changes nothing. Prints nothing.
Outcome launchctl(Arguments arguments, Output &output);

} // namespace velq::nettools
