#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// `arp -a`: the IPv4 neighbours that the kernel knows, in the form of the BSD arp(8), ordered by
/// address: "? (192.168.1.1) at 0:1b:c:d:e:f on eth0 ifscope [ethernet]". Instead of "?" stands the
/// host's name where it has one, unless `-n` is given.
Outcome arp(Arguments arguments, Output &output);

} // namespace velq::nettools
