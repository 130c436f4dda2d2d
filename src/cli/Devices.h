#pragma once

#include "cli/Report.h"

namespace velq::cli
{

/// The devices of the local network; a program gets each record by its properties' names.
Report devices();

} // namespace velq::cli
