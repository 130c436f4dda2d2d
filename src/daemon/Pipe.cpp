#include "daemon/Pipe.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <system_error>

namespace velq::daemon
{

Pipe::Pipe()
{
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::system_error(errno, std::generic_category(), "pipe");
    readingEnd = posix::Descriptor(ends[0]);
    writingEnd = posix::Descriptor(ends[1]);
    // A writing end that did not block would be the command's problem.
    if (fcntl(ends[0], F_SETFL, O_NONBLOCK) != 0)
        throw std::system_error(errno, std::generic_category(), "fcntl");
}

} // namespace velq::daemon
