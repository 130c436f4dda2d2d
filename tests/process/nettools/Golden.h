#pragma once

#include "process/nettools/ToolRun.h"

#include <string>

namespace velq::testing
{

/// Holds output, errors and exit status of a run against the file golden/NAME.txt. With
/// VELQ_UPDATE_GOLDEN set in the environment, writes that file instead.
void expectGolden(const std::string &name, const ToolRun &run);

/// Puts the same number in the place of every time that a table counts down.
std::string withoutTimes(const std::string &table);

} // namespace velq::testing
