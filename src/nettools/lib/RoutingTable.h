#pragma once

#include "nettools/lib/RouteRow.h"

#include <cstdint>
#include <vector>

namespace velq::nettools
{

/// The routing table of one family (AF_INET, AF_INET6) as a BSD system shows it: routes, own
/// addresses and neighbours in one list, the default routes first, then by address, a network
/// before what lies inside it. Of several routes to the same place the one that wins stands first
/// and the others are marked as good on their interface alone. The rows point into `tables`.
std::vector<RouteRow> routingTable(const KernelTables &tables, uint8_t family);

} // namespace velq::nettools
