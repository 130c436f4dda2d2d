#pragma once

#include <string>

namespace velq::launchagent
{

/// Makes the property list at `path` a service of the caller's systemd that is started now,
/// whenever it ends, and at each log-in (for root: at each boot). One that is loaded already is
/// started anew if its definition, its program's version or the caller's display is another one
/// than it has. Throws Error; then nothing was written, or what was written is gone again.
void load(const std::string &path);

/// Stops the agent of the property list at `path` until the next log-in. Waits until it has ended,
/// unless the caller is part of it: then the end is only asked for, and is the last thing asked.
/// Throws Error.
void unload(const std::string &path);

} // namespace velq::launchagent
