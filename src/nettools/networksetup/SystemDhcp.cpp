#include "nettools/networksetup/SystemDhcp.h"

#include "nettools/lib/SystemProgram.h"
#include "nettools/networkmanager/Bus.h"
#include "nettools/networksetup/Backend.h"
#include "shell/process/ChildProcess.h"

#include <array>
#include <string>
#include <vector>

namespace velq::nettools
{

namespace
{

// False when it does not run, or does not keep this device.
bool askNetworkd(const Port &port)
{
    const auto bus = Bus::openSystem();
    if (!bus)
        return false;
    try {
        const Message message =
            bus->request("org.freedesktop.network1", "/org/freedesktop/network1",
                         "org.freedesktop.network1.Manager", "RenewLink");
        check(sd_bus_message_append(message.get(), "i", static_cast<int>(port.index)),
              "asking systemd-networkd");
        (void)bus->call(message);
        return true;
    } catch (const BusError &error) {
        if (error.isDenial())
            throw Refusal("you have not the right to change the network");
        return false;
    }
}

constexpr const char *patience = "25";

struct Client {
    const char *name;
    std::vector<std::string> arguments;
    std::vector<std::string> ending; ///< of one that stays after its lease; empty for none to end
};

// Each ends or steps back once there is a lease. Some have no limit of their own that a call could
// set.
std::vector<Client> clients(const std::string &device)
{
    // Where ifup keeps them, too, so that either ends what the other has started.
    const std::string process = "/run/dhclient." + device + ".pid";
    const std::string leases = "/var/lib/dhcp/dhclient." + device + ".leases";
    return {{"dhclient",
             {"-4", "-1", "-q", "-pf", process, "-lf", leases, device},
             {"-4", "-x", "-q", "-pf", process, device}},
            {"dhcpcd", {"-4", "-q", "-w", "-t", "20", device}, {}},
            {"udhcpc", {"-q", "-n", "-t", "5", "-i", device}, {}}};
}

bool succeeds(const std::string &program, const std::vector<std::string> &arguments)
{
    try {
        process::ChildProcess child(program, arguments);
        (void)child.readToEnd();
        child.waitUntilExit();
        return child.exitStatus() == 0;
    } catch (const process::LaunchError &error) {
        throw Refusal(error.what());
    }
}

} // namespace

void askForLease(const Port &port)
{
    if (askNetworkd(port))
        return;
    for (Client &client : clients(port.device)) {
        const std::string program = systemProgram(client.name);
        if (program.empty())
            continue;
        if (!client.ending.empty())
            (void)succeeds(program, client.ending);
        client.arguments.insert(client.arguments.begin(), {patience, program});
        if (!succeeds(systemProgram("timeout"), client.arguments))
            throw Refusal("no DHCP server has answered on " + port.name);
        return;
    }
    throw Refusal(
        "neither NetworkManager nor systemd-networkd runs here, and there is no DHCP client");
}

} // namespace velq::nettools
