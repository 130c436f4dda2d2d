#pragma once

#include "nettools/wifi/WifiState.h"

#include <string>

namespace velq::nettools
{

/// Lines of a key, a colon, a blank and a value, the colons below each other; of a radio that is
/// off only that. What is not known has no line. A byte of the network's name that would end the
/// line, or that a terminal would obey, is shown as "?".
void appendWifi(std::string &out, const WifiState &wifi);

} // namespace velq::nettools
