#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

namespace velq::cli
{

class Interruption;

/// Which applications could be faster, and the speed-up.
Report accelerate(const Arguments &arguments, Interruption &interruption);

} // namespace velq::cli
