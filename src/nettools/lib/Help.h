#pragma once

#include "nettools/lib/Tool.h"

#include <string>
#include <vector>

namespace velq::nettools
{

/// The ways to call the tool, its name in front of each.
std::vector<std::string> callsOf(const Tool &tool);
/// The same as whole lines.
std::string usageLines(const Tool &tool);
/// How one of its forms is called, the tool's name left out.
std::string callOf(const Form &form);
/// What "--help" shows: the usage, what it means, every form, and where more is told.
std::string helpText(const Tool &tool);
/// The tool's manual page. It has not the tool's own name: that is another page's, of the system's
/// program.
std::string manualPageName(const Tool &tool);

} // namespace velq::nettools
