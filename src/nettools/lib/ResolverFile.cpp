#include "nettools/lib/ResolverFile.h"

#include <fstream>
#include <sstream>

namespace velq::nettools
{

bool isNameServerLine(std::string_view line)
{
    constexpr std::string_view keyword = "nameserver";
    return line.starts_with(keyword) && line.size() > keyword.size()
        && (line[keyword.size()] == ' ' || line[keyword.size()] == '\t');
}

std::vector<std::string> readNameServers(const char *file)
{
    std::vector<std::string> servers;
    std::ifstream input(file);
    for (std::string line; std::getline(input, line);) {
        std::istringstream words(line);
        std::string server;
        if (isNameServerLine(line) && words >> server >> server)
            servers.push_back(server);
    }
    return servers;
}

} // namespace velq::nettools
