#include "nettools/networksetup/SessionBus.h"

namespace velq::nettools
{

SessionBus openSessionBus()
{
    sd_bus *bus = nullptr;
    if (sd_bus_open_user(&bus) < 0)
        return nullptr;
    return SessionBus(bus);
}

} // namespace velq::nettools
