#pragma once

#include <functional>

namespace velq::testing
{

/// Runs the event loop until `condition` holds. False when it does not within ten seconds: then the
/// test has failed, not been too hasty.
bool waitUntil(const std::function<bool()> &condition);

/// Runs the event loop until everything posted so far, and what that posts, has been handled.
void settle();

} // namespace velq::testing
