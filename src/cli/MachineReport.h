#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

namespace velq::cli
{

class Interruption;

/// With it the report names everything as it is.
inline constexpr Option privateOption{"--private", "leave addresses and names in"};

/// What somebody who is to help must know of this computer, for a letter: "velq", "system",
/// "tools", "helper", "monitor", "services", "proxies" and "results", the last ones of the commands
/// that scan. Addresses and names are blanked unless asked for.
Report machineReport(const Arguments &arguments, Interruption &interruption);

} // namespace velq::cli
