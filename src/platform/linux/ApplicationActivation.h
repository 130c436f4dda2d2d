#pragma once

namespace velq
{

class RunningApplication;

/// Brings the application to the front: asks it over the session bus if it owns its identifier
/// there, else has the window manager activate its window. False when it has neither.
bool bringForward(const RunningApplication &application);

} // namespace velq
