#pragma once

#include <QString>

namespace velq
{

/// To be called when the file of the launch agent `label` has been deleted: removes what the
/// platform's service manager still keeps of it, which could not start it any more. Starts no
/// program, and leaves files alone that somebody else made. Any thread.
void forgetLaunchAgent(const QString &label);

/// Whether the program of the launch agent `label` runs because that agent is loaded. No when
/// nobody can tell. Any thread.
bool launchAgentIsRunning(const QString &label);

} // namespace velq
