#pragma once

#include <string>

namespace velq::nettools
{

/// $HOME, or what the system's list of users says when that is no absolute path.
std::string homeFolder();

/// The folder in an environment variable of the XDG base directories; `belowHome` in the home
/// folder when that is no absolute path.
std::string baseFolder(const char *variable, const char *belowHome);

} // namespace velq::nettools
