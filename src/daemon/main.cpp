#include "daemon/Daemon.h"
#include "daemon/Options.h"

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fcntl.h>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using namespace velq::daemon;

// Descriptors that are opened later must not become somebody's standard output.
void occupyStandardDescriptors()
{
    int descriptor = 0;
    do {
        descriptor = open("/dev/null", O_RDWR);
    } while (descriptor >= 0 && descriptor <= STDERR_FILENO);
    if (descriptor > STDERR_FILENO)
        close(descriptor);
}

int serve(const Options &options)
{
    if (options.help)
        return std::fputs(usage, stdout) < 0 ? EXIT_FAILURE : EXIT_SUCCESS;
    umask(S_IRWXG | S_IRWXO);
    return Daemon(options).run();
}

} // namespace

int main(int argc, char **argv)
{
    occupyStandardDescriptors();
    try {
        // A caller may leave out even the program's name.
        return serve(optionsFrom(std::span(argv + (argc > 0 ? 1 : 0), argv + argc)));
    } catch (const BadOptions &wrong) {
        (void)std::fprintf(stderr, "VelqDemon: %s\n%s", wrong.what(), usage);
        return 2;
    } catch (const std::exception &failure) {
        (void)std::fprintf(stderr, "VelqDemon: %s\n", failure.what());
        return EXIT_FAILURE;
    }
}
