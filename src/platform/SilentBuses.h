#pragma once

namespace velq
{

/// Takes a message bus that accepts connections but does not answer out of the environment, for
/// this process and its children: connecting to it would wait for ever, and the program can do
/// without. Waits a second at most for each bus. Before the first use of a bus and before any
/// thread is started.
void leaveOutSilentBuses();

} // namespace velq
