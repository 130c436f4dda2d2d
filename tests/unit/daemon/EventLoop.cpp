#include "unit/daemon/EventLoop.h"

#include <chrono>

namespace velq::testing
{

namespace
{

constexpr std::chrono::seconds patience{40};

} // namespace

daemon::Event newLoop()
{
    sd_event *loop = nullptr;
    daemon::demand(sd_event_new(&loop), "sd_event_new");
    return daemon::Event(loop);
}

bool runUntil(sd_event *loop, const std::function<bool()> &condition)
{
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > deadline)
            return false;
        sd_event_run(loop, 20000);
    }
    return true;
}

} // namespace velq::testing
