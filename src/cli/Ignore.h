#pragma once

#include "cli/Arguments.h"
#include "cli/Report.h"

namespace velq::cli
{

class Interruption;

/// What `ignore` takes.
extern const Operand ignoreKey;

/// Turns the lasting choice to ignore an issue round: "ignoreKey", and "ignore", what it is now.
Report ignore(const Arguments &arguments, Interruption &interruption);

} // namespace velq::cli
