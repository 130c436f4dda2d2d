#pragma once

namespace velq::cli
{

/// Says on standard error that the system's keeper of the network's settings is installed but does
/// not run, and what to do. Nothing otherwise.
void explainStoppedKeeper();

} // namespace velq::cli
