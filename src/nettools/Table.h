#pragma once

#include "nettools/Airport.h"
#include "nettools/Arp.h"
#include "nettools/Defaults.h"
#include "nettools/Ifconfig.h"
#include "nettools/Launchctl.h"
#include "nettools/Netstat.h"
#include "nettools/Networksetup.h"
#include "nettools/Nslookup.h"
#include "nettools/Ping.h"
#include "nettools/Route.h"
#include "nettools/Sudo.h"
#include "nettools/lib/Tool.h"
#include "nettools/networksetup/Forms.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace velq::nettools
{

/// All tools, each with its help. Every tool is a program of its own whose main picks its row while
/// it is compiled: so a program links nothing that only its neighbours in this table need.
inline constexpr Tool tools[] = {
    {"airport", "-I", "Shows what Wi-Fi does now: whether it is on, and which network it is in.",
     airport},
    {"arp", "[-n] -a",
     "Shows the IPv4 hosts of the local network that the kernel knows, with their\n"
     "hardware addresses. -n leaves their names out.",
     arp},
    {"defaults", "read [DOMAIN [KEY]]\nwrite DOMAIN { KEY VALUE | LIST }\ndelete DOMAIN [KEY]",
     "Shows and changes the user's settings. A DOMAIN is a name such as\n"
     "com.zelmor.Velq, the path of a property list, or -g for what all programs\n"
     "share. A VALUE is a text or one of\n"
     "  -string TEXT    -int NUMBER    -float NUMBER    -bool true|false\n"
     "  -date DATE      -data HEX      -array [VALUE ...]      -dict [KEY VALUE ...]\n"
     "  -array-add [VALUE ...]         -dict-add [KEY VALUE ...]\n"
     "and a LIST all of a domain's settings as a property list.",
     defaults},
    {"ifconfig", "[-a] | DEVICE [up | down]",
     "Shows network interfaces, their addresses and whether they are active, or\n"
     "switches one on or off.",
     ifconfig},
    {"launchctl", "load|unload [-w] FILE",
     "Loads a launch agent's property list: its program is started now and at each\n"
     "log-in, and again whenever it ends. Unloads it: the program is stopped until\n"
     "the next log-in.",
     launchctl},
    {"netstat", "-n -r", "Shows the routing tables in numbers.", netstat},
    {"networksetup", "FORM [ARGUMENT...]",
     "Shows and changes network services, as networksetup(8) of macOS does. A service\n"
     "is named as -listallnetworkservices shows it, or by its device.",
     networksetup, networksetupForms},
    {"nslookup", "HOST", "Asks the name servers of this computer for the address of a host.",
     nslookup},
    {"ping", "[-c COUNT] [-D] [-s SIZE] HOST",
     "Asks a host for echoes until it is interrupted, or COUNT times. -s SIZE sends\n"
     "that many bytes with each; -D forbids that packets are taken to pieces on the\n"
     "way. Ends with the status of the system's ping.",
     ping},
    {"route", "[-n] get DESTINATION",
     "Shows the route to a host, or the \"default\" one. -n shows the host in numbers.", route},
    {"sudo", "COMMAND...",
     "Runs a command as root: at once for root, by the system's own sudo for others.\n"
     "Ends with the status of the command.",
     sudo},
};

/// The row of that name; does not compile when there is none.
consteval Tool toolNamed(std::string_view name)
{
    const Tool *tool = tools;
    while (tool->name != name)
        ++tool;
    return *tool;
}

/// All tools without what they run: for those who only tell of them and link none.
consteval auto toolDescriptions()
{
    std::array<Tool, std::size(tools)> result{};
    std::ranges::copy(tools, result.begin());
    for (Tool &each : result)
        each.run = nullptr;
    return result;
}

} // namespace velq::nettools
