#pragma once

#include <functional>
#include <sys/types.h>

namespace velq::testing
{

/// Runs the event loop until `condition` holds. False when it does not within forty seconds: then
/// the test has failed, not been too hasty.
bool waitUntil(const std::function<bool()> &condition);

/// Runs the event loop until that child process of the test's has ended, which is then waited for.
/// False when it does not, as above, or did not end by itself.
bool hasExited(pid_t child);

/// Runs the event loop until everything posted so far, and what that posts, has been handled.
void settle();

} // namespace velq::testing
