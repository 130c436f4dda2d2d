#include "daemon/Request.h"

#include <string_view>
#include <sys/stat.h>

namespace velq::daemon
{

namespace
{

constexpr size_t longestPath = 4096;
constexpr size_t mostArguments = 256;
// What execve(2) takes of one argument, its final NUL included.
constexpr size_t longestArgument = size_t{128} * 1024;
constexpr size_t mostBytes = size_t{1024} * 1024;

bool leadsUpwards(std::string_view path)
{
    return path.find("/../") != std::string_view::npos || path.ends_with("/..");
}

bool isGoodPath(const std::string &path)
{
    return path.starts_with('/') && path.size() <= longestPath && !leadsUpwards(path);
}

} // namespace

bool isWellFormed(const Request &request)
{
    size_t bytes = 0;
    for (const std::string &argument : request.arguments) {
        if (argument.size() >= longestArgument)
            return false;
        bytes += argument.size() + 1;
    }
    return isGoodPath(request.launchPath) && request.arguments.size() <= mostArguments
        && bytes <= mostBytes;
}

std::optional<Request> requestIn(sd_bus_message *message)
{
    const char *text = nullptr;
    if (sd_bus_message_has_signature(message, "sas") <= 0
        || sd_bus_message_read_basic(message, 's', &text) <= 0)
        return std::nullopt;
    Request request{text, {}};
    if (sd_bus_message_enter_container(message, 'a', "s") <= 0)
        return std::nullopt;
    int read = 0;
    while ((read = sd_bus_message_read_basic(message, 's', &text)) > 0) {
        request.arguments.emplace_back(text);
        if (request.arguments.size() > mostArguments)
            return std::nullopt;
    }
    if (read < 0 || !isWellFormed(request))
        return std::nullopt;
    return request;
}

bool isProgram(const std::string &path)
{
    struct stat status {
    };
    constexpr mode_t executable = S_IXUSR | S_IXGRP | S_IXOTH;
    return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode)
        && (status.st_mode & executable) != 0;
}

} // namespace velq::daemon
