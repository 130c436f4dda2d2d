#include "platform/StandardStreams.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace velq
{

namespace
{

// The lowest free descriptor is the one that is missing, as the lower ones have been seen to.
void fill(int descriptor, const char *path, int mode)
{
    if (fcntl(descriptor, F_GETFD) < 0 && errno == EBADF)
        (void)open(path, mode);
}

} // namespace

void fillClosedStandardStreams()
{
    fill(STDIN_FILENO, "/dev/null", O_WRONLY);
    fill(STDOUT_FILENO, "/dev/full", O_WRONLY);
    fill(STDERR_FILENO, "/dev/full", O_WRONLY);
}

} // namespace velq
