#pragma once

#include "nettools/lib/Tool.h"

namespace velq::nettools
{

/// Runs `tool` as a program: prints to standard output, puts complaints on standard error as
/// "NAME: complaint" (followed by the usage line after a wrong call) and answers "--help" and
/// "--version" by itself. Output that cannot be written is a failure, told by the exit status and a
/// complaint, never by a signal. Returns the exit status; see Outcome.
int runTool(const Tool &tool, Arguments arguments);

} // namespace velq::nettools
