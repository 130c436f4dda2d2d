#pragma once

#include "nettools/lib/Tool.h"

#include <string>

namespace velq::nettools
{

/// The manual page of a tool, for man(1).
std::string manualPage(const Tool &tool);

} // namespace velq::nettools
