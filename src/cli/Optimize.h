#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

namespace velq::cli
{

class Interruption;

/// What slows the connection down, and the speed-up.
Report optimize(const Arguments &arguments, Interruption &interruption);

} // namespace velq::cli
