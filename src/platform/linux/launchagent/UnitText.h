#pragma once

#include "platform/linux/launchagent/Agent.h"
#include "platform/linux/launchagent/Domain.h"

#include <string>
#include <vector>

namespace velq::launchagent
{

/// What a line begins with that tells our files from everybody else's.
inline constexpr std::string_view unitMark = "[X-LaunchAgent]";
inline constexpr std::string_view entryMark = "X-LaunchAgent";

/// The unit file of an agent that requireProgram() let pass. `environment` ("NAME=value", without
/// control characters) is given to the program besides its service manager's.
std::string unitText(const Agent &agent, const Domain &domain,
                     const std::vector<std::string> &environment);

/// A desktop's autostart entry that loads the agent with the launchctl program at `tool`.
std::string autostartText(const Agent &agent, const std::string &tool);

} // namespace velq::launchagent
