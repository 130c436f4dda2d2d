#pragma once

#include "cli/Accelerate.h"
#include "cli/Command.h"
#include "cli/Devices.h"
#include "cli/Diagnose.h"
#include "cli/Examination.h"
#include "cli/Helper.h"
#include "cli/Ignore.h"
#include "cli/MachineReport.h"
#include "cli/Monitor.h"
#include "cli/Optimize.h"
#include "cli/Proxies.h"
#include "cli/Repair.h"
#include "cli/Restore.h"
#include "cli/Services.h"
#include "cli/Status.h"

namespace velq::cli
{

/// What the commands that scan take.
inline constexpr Option scannerOptions[] = {repairOption};
inline constexpr Option speedupOptions[] = {speedupOption};
inline constexpr Option reportOptions[] = {privateOption};

/// All commands, those first that a person without a connection needs. What is called, helped with,
/// completed and described in the manual comes from here.
inline constexpr Command commands[] = {
    {"status", "show whether the network is usable",
     "Shows whether the network is usable, and the interface that the traffic takes.\n"
     "Sends no packet.",
     "there is no connection", simple<status>, NeedsKeeper},
    {"diagnose", "find out what breaks the connection",
     "Looks which link of the chain is broken: cable, address, name server, proxy or\n"
     "router. Repairing needs the administrator's rights and may ask for a password;\n"
     "what there is to decide is asked at the terminal, and where nobody can answer,\n"
     "the first answer is taken. The settings that it changes, velq restore puts back.\n"
     "Interrupted, it stops after the step in hand and says how far it came;\n"
     "interrupted again, it ends at once.",
     "something is wrong, or still is", diagnose, Kept | NeedsKeeper, scannerOptions},
    {"repair", "bring the connection back",
     "Brings the connection back: switches on every interface and every service, and\n"
     "lets Ethernet and Wi-Fi ask for addresses. Needs the administrator's rights and\n"
     "may ask for a password. Does nothing while the network is usable. The settings\n"
     "that it changes, velq restore puts back.",
     "there still is no connection", simple<repair>, NeedsKeeper},
    {"restore",
     "put back what a repair has changed",
     "Puts the settings of a service back as they were before a repair or a speed-up\n"
     "of Velq's first changed them: how it gets its address, its name servers, its\n"
     "MTU, its place in the order of the services. What somebody else has changed in\n"
     "them since then goes, too. NetworkManager keeps them, and must run. Needs the\n"
     "administrator's rights and may ask for a password.",
     "they could not be put back",
     restore,
     NeedsKeeper,
     {},
     &restoredService},
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
    {"optimize", "find out what slows the connection down",
     "Looks at what slows down a connection that works: which network card has\n"
     "priority, the MTU, the card cache, and the name servers. The speed-up sets the\n"
     "order of the services, the MTU of the current interface and a public name\n"
     "server, which velq restore takes back; it needs the administrator's rights and\n"
     "may ask for a password. The card cache is told of, but not emptied.",
     "something slows the connection down, or still does", optimize, Kept, speedupOptions},
    {"accelerate", "find out which applications could be faster",
     "Looks whether Safari lays pages out early, and whether the hosts of iCloud,\n"
     "iTunes and the App Store are accelerated. The speed-up sets Safari's preference\n"
     "and appends lines to the hosts file, which everybody may write from then on; for\n"
     "both reading and writing that file it needs the administrator's rights and may\n"
     "ask for a password.",
     "an acceleration is off, or still is", accelerate, Kept, speedupOptions},
    {"ignore",
     "ignore an issue, or no longer",
     "Turns the lasting choice to ignore an issue round, and says what it is now: the\n"
     "same words again take it back. The keys are in what the scans print for\n"
     "programs, and in the manual.",
     nullptr,
     ignore,
     0,
     {},
     &ignoreKey},
    {"report", "tell what somebody who is to help must know",
     "Tells the versions of Velq, the system and the tools, the network services and\n"
     "proxies, and what the last scans found, for a letter that asks for help.\n"
     "Addresses, hardware addresses and names of networks, computers and people are\n"
     "blanked unless asked for. Changes nothing.",
     nullptr, machineReport, 0, reportOptions},
    {"monitor",
     "install the monitor, or start and stop it",
     "Installs the monitor for you, so that it runs now and from each log-in on,\n"
     "removes it again, starts it, or stops it until the next log-in.",
     "it did not come to that",
     monitor,
     ToolsSpeak,
     {},
     &monitorAction},
    {"helper",
     "show or remove the helper that works as root",
     "Shows whether the helper that runs Velq's commands as root is there, as it was\n"
     "installed, and serves you; or removes it, which needs the administrator's\n"
     "password.",
     "it does not serve you, or could not be removed",
     helper,
     0,
     {},
     &helperAction},
};

} // namespace velq::cli
