#pragma once

#include "cli/Command.h"
#include "cli/Devices.h"
#include "cli/Proxies.h"
#include "cli/Services.h"
#include "cli/Status.h"

namespace velq::cli
{

/// All commands, those first that a person without a connection needs. What is called, helped with,
/// completed and described in the manual comes from here.
inline constexpr Command commands[] = {
    {"status", "show whether the network is usable",
     "Shows whether the network is usable, and the interface that the traffic takes.\n"
     "Sends no packet.",
     "there is no connection", simple<status>, NeedsKeeper},
    {"services", "list the network services",
     "Lists the computer's network services, each with its interface, its hardware\n"
     "address, its IPv4 address, whether it is enabled, and whether its link is\n"
     "active.",
     nullptr, simple<services>, NeedsKeeper},
    {"devices", "list the devices of the local network",
     "Lists the devices of the local network that the computer has to do with, each\n"
     "with its IP address and its hardware address.",
     nullptr, simple<devices>},
    {"proxies", "list the proxies in use",
     "Lists the proxies that are switched on for the service that the traffic takes.", nullptr,
     simple<proxies>},
};

} // namespace velq::cli
