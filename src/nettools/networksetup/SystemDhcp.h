#pragma once

#include "nettools/networksetup/Port.h"

namespace velq::nettools
{

/// Has the port's address asked for by DHCP, by what this system has for that and runs already or
/// is run for nothing else: systemd-networkd, or a DHCP client. Returns when there is a lease.
/// Throws Refusal.
void askForLease(const Port &port);

} // namespace velq::nettools
