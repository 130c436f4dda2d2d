#pragma once

#include "daemon/Handles.h"

#include <functional>

namespace velq::testing
{

daemon::Event newLoop();

/// Turns the loop until the condition holds; false when it does not for 40 seconds.
bool runUntil(sd_event *loop, const std::function<bool()> &condition);

} // namespace velq::testing
