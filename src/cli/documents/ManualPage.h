#pragma once

#include <string>
#include <vector>

namespace velq::cli
{

/// The manual page of the command, for man(1), which names the pages of these tools.
std::string manualPage(const std::vector<std::string> &tools);

} // namespace velq::cli
