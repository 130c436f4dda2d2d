#include "platform/SilentBuses.h"

#include "platform/linux/BusHandle.h"

#include <QDeadlineTimer>
#include <QtGlobal>

namespace velq
{

namespace
{

using namespace std::chrono_literals;

constexpr auto patience = 1s;

// A bus that refuses is left to Qt, which then does without it at once.
bool answersOrRefuses(int (*open)(sd_bus **))
{
    sd_bus *opened = nullptr;
    if (open(&opened) < 0)
        return true;
    const BusHandle bus(opened);
    const QDeadlineTimer deadline(patience);
    while (sd_bus_is_ready(bus.get()) == 0) {
        const int done = sd_bus_process(bus.get(), nullptr);
        if (done < 0)
            return true;
        if (deadline.hasExpired())
            return false;
        if (done == 0)
            (void)sd_bus_wait(bus.get(),
                              static_cast<uint64_t>(deadline.remainingTimeNSecs() / 1000));
    }
    return true;
}

} // namespace

void leaveOutSilentBuses()
{
    if (!answersOrRefuses(sd_bus_open_user))
        qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
    if (!answersOrRefuses(sd_bus_open_system))
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "disabled:");
}

} // namespace velq
