#include "nettools/networksetup/NameServers.h"

#include "nettools/lib/ResolverFile.h"
#include "nettools/networkmanager/Bus.h"
#include "nettools/networksetup/Backend.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <sstream>
#include <sys/stat.h>
#include <unistd.h>

namespace velq::nettools
{

namespace
{

constexpr const char *asking = "asking systemd-resolved";

void appendServer(sd_bus_message *message, const std::string &server)
{
    std::array<uint8_t, sizeof(in6_addr)> bytes{};
    const int family = server.find(':') != std::string::npos ? AF_INET6 : AF_INET;
    (void)inet_pton(family, server.c_str(), bytes.data());
    check(sd_bus_message_open_container(message, SD_BUS_TYPE_STRUCT, "iay"), asking);
    check(sd_bus_message_append(message, "i", family), asking);
    check(sd_bus_message_append_array(message, SD_BUS_TYPE_BYTE, bytes.data(),
                                      family == AF_INET6 ? sizeof(in6_addr) : sizeof(in_addr)),
          asking);
    check(sd_bus_message_close_container(message), asking);
}

/// Whoever keeps a link's servers; both speak the same of them.
struct Keeper {
    const char *name;
    const char *path;
    const char *interface;
    const char *revert; ///< gives the choice back; null where setting none does
};

constexpr Keeper resolved{"org.freedesktop.resolve1", "/org/freedesktop/resolve1",
                          "org.freedesktop.resolve1.Manager", nullptr};
constexpr Keeper networkd{"org.freedesktop.network1", "/org/freedesktop/network1",
                          "org.freedesktop.network1.Manager", "RevertLinkDNS"};

Message requestTo(const Bus &bus, const Keeper &keeper, const char *member, const Port &port)
{
    Message message = bus.request(keeper.name, keeper.path, keeper.interface, member);
    check(sd_bus_message_append(message.get(), "i", static_cast<int>(port.index)), asking);
    return message;
}

void setServers(const Bus &bus, const Keeper &keeper, const Port &port,
                const std::vector<std::string> &servers)
{
    if (servers.empty() && keeper.revert != nullptr) {
        (void)bus.call(requestTo(bus, keeper, keeper.revert, port));
        return;
    }
    const Message message = requestTo(bus, keeper, "SetLinkDNS", port);
    check(sd_bus_message_open_container(message.get(), SD_BUS_TYPE_ARRAY, "(iay)"), asking);
    for (const std::string &server : servers)
        appendServer(message.get(), server);
    check(sd_bus_message_close_container(message.get()), asking);
    (void)bus.call(message);
}

// False when it does not run.
bool giveToResolver(const Port &port, const std::vector<std::string> &servers)
{
    const auto bus = Bus::openSystem();
    if (!bus)
        return false;
    try {
        try {
            setServers(*bus, resolved, port, servers);
        } catch (const BusError &error) {
            // systemd-networkd keeps the link's settings.
            if (error.name() != "org.freedesktop.resolve1.LinkBusy")
                throw;
            setServers(*bus, networkd, port, servers);
        }
        return true;
    } catch (const BusError &error) {
        if (error.isAbsence())
            return false;
        throw Refusal(std::string("systemd-resolved refuses: ") + error.what());
    }
}

std::string textWith(const std::vector<std::string> &servers)
{
    std::ostringstream text;
    for (const std::string &server : servers)
        text << "nameserver " << server << '\n';
    std::ifstream old(resolverFile);
    for (std::string line; std::getline(old, line);) {
        if (!isNameServerLine(line))
            text << line << '\n';
    }
    return text.str();
}

// A link belongs to a program that writes what it leads to; this one would lose.
void refuseLink()
{
    struct stat status {
    };
    if (lstat(resolverFile, &status) == 0 && S_ISLNK(status.st_mode))
        throw Refusal(std::string(resolverFile) + " is kept by a program that does not run now");
}

bool replaceFile(const std::string &text)
{
    const std::string temporary = std::string(resolverFile) + ".velq";
    std::ofstream output(temporary, std::ios::trunc);
    output << text;
    output.close();
    return output && chmod(temporary.c_str(), 0644) == 0
        && rename(temporary.c_str(), resolverFile) == 0;
}

} // namespace

void writeNameServers(const Port &port, const std::vector<std::string> &servers)
{
    if (giveToResolver(port, servers))
        return;
    refuseLink();
    if (servers.empty())
        throw Refusal("NetworkManager does not run, and nothing else here knows other DNS servers");
    if (!replaceFile(textWith(servers)))
        throw Refusal(std::string(resolverFile) + " cannot be written: " + std::strerror(errno));
}

} // namespace velq::nettools
