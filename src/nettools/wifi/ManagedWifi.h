#pragma once

#include "nettools/networkmanager/State.h"
#include "nettools/wifi/WifiState.h"

namespace velq::nettools
{

/// The radio that NetworkManager keeps; nothing when it keeps none.
std::optional<WifiState> managedWifi(const State &state);

} // namespace velq::nettools
