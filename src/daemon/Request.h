#pragma once

#include <optional>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

namespace velq::daemon
{

/// What a caller wants run. A copy: nothing of the message is read again after it was made, so what
/// was checked is what runs.
struct Request {
    std::string launchPath;
    std::vector<std::string> arguments;
};

/// The request in a call; nothing when its signature is another, or its form is beyond what is
/// accepted. Tells nothing of the file that the path names.
std::optional<Request> requestIn(sd_bus_message *message);

/// An absolute path of at most 4096 bytes without a ".." in it, at most 256 arguments of at most
/// 128 KiB, 1 MiB in all.
bool isWellFormed(const Request &request);

/// An executable regular file. For callers that may know.
bool isProgram(const std::string &path);

} // namespace velq::daemon
