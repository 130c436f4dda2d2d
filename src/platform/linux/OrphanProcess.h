#pragma once

#include <string>
#include <vector>

namespace velq
{

/// Starts a program, the first of the words, with the others as its arguments and this environment
/// ("NAME=value"), as nobody's child, in a session of its own, with the null device for its
/// standard streams and no signal blocked or ignored. False when it cannot be started.
bool startOrphan(const std::vector<std::string> &words,
                 const std::vector<std::string> &environment);

} // namespace velq
