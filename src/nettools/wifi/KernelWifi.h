#pragma once

#include "nettools/wifi/WifiState.h"

namespace velq::nettools
{

/// The radio as the kernel has it, on while its device is up; nothing when there is none. Throws
/// Refusal when the kernel does not answer.
std::optional<WifiState> kernelWifi();

} // namespace velq::nettools
