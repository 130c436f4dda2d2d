#pragma once

#include "nettools/networksetup/Port.h"

#include <string>
#include <vector>

namespace velq::nettools
{

/// Where no network manager keeps DNS servers: gives them to systemd-resolved for this port when it
/// runs, else writes them into /etc/resolv.conf, whose other lines stay; none gives the choice
/// back. Throws Refusal.
void writeNameServers(const Port &port, const std::vector<std::string> &servers);

} // namespace velq::nettools
