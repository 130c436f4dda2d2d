#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

namespace velq::cli
{

class Interruption;

/// What `restore` takes.
extern const Operand restoredService;

/// Puts the settings of a service back as they were before Velq's first change.
Report restore(const Arguments &arguments, Interruption &interruption);

} // namespace velq::cli
