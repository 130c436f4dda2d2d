#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

namespace velq::cli
{

class Interruption;

/// The diagnosis of the connection, and its repair.
Report diagnose(const Arguments &arguments, Interruption &interruption);

} // namespace velq::cli
