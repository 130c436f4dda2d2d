#pragma once

#include <functional>

namespace velq::testing
{

/// Runs `test` in a process that sees no processes but itself and its children, and returns its
/// exit status: whatever it ends is its own. Works as root, and as a user where the kernel allows
/// user namespaces; where it does not, the test counts as skipped, or fails where CI is set. For
/// main(), before any thread is started.
int runAmongOwnProcesses(const std::function<int()> &test);

} // namespace velq::testing
