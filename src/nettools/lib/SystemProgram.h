#pragma once

#include <string>
#include <string_view>

namespace velq::nettools
{

/// Where the system's own program of that name is, for a tool that stands in front of it: the first
/// one on PATH that is not in the tool's own folder. Empty when there is none.
std::string systemProgram(std::string_view name);

} // namespace velq::nettools
