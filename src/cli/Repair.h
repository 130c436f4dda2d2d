#pragma once

#include "cli/Report.h"

namespace velq::cli
{

/// The repair of the connection, and the status after it.
Report repair();

} // namespace velq::cli
