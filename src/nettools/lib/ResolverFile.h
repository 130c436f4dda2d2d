#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velq::nettools
{

/// Where the system's resolver reads which name servers it is to ask.
inline constexpr const char *resolverFile = "/etc/resolv.conf";
/// Where systemd-resolved writes, in the same words, which ones it asks itself.
inline constexpr const char *resolvedServersFile = "/run/systemd/resolve/resolv.conf";

/// Whether a line of such a file names a server.
bool isNameServerLine(std::string_view line);

/// The servers that such a file names, in its order; none when there is no such file.
std::vector<std::string> readNameServers(const char *file = resolverFile);

} // namespace velq::nettools
