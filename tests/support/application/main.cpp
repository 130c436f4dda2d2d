// An application to be opened, brought forward and ended. It tells its log "opened", "activated"
// and "terminated".

#include "support/application/BusName.h"
#include "support/application/Contents.h"
#include "support/application/Window.h"

#include <array>
#include <csignal>
#include <poll.h>
#include <sys/signalfd.h>

int main()
{
    using namespace velq::testing;

    // Blocked already: then somebody who started it forgot to undo that.
    sigset_t ending;
    sigset_t before;
    sigemptyset(&ending);
    sigaddset(&ending, SIGTERM);
    sigprocmask(SIG_BLOCK, &ending, &before);
    if (sigismember(&before, SIGTERM) == 1)
        tell("started with blocked signals");

    BusName name(identifier());
    const Window window;
    tell("opened");
    std::array<pollfd, 2> waiting{
        {{signalfd(-1, &ending, SFD_CLOEXEC), POLLIN, 0}, {name.descriptor(), POLLIN, 0}}};
    do {
        name.handleInput();
        (void)poll(waiting.data(), waiting.size(), -1);
    } while (waiting[0].revents == 0);
    tell("terminated");
    return 0;
}
