#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// nslookup HOST: asks the name servers of this computer for a host's address, one after the other,
/// and tells of it as the tool of that name does.
///
/// Ends with 1 when there is no such host, or when no server answers. The latter is said on
/// standard output, where those who read it look for it, five seconds for each server later at
/// most.
Outcome nslookup(Arguments arguments, Output &output);

} // namespace velq::nettools
