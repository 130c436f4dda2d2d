#include "process/nettools/Streams.h"

#include <array>
#include <fcntl.h>
#include <unistd.h>

namespace velq::testing
{

void intoFullDevice()
{
    dup2(open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
}

void intoClosedPipe()
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        _exit(127);
    dup2(ends[1], STDOUT_FILENO);
    close(ends[0]);
    close(ends[1]);
}

} // namespace velq::testing
