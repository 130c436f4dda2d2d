#include "nettools/wifi/KernelWifi.h"

#include "nettools/lib/Kernel.h"
#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/KernelPorts.h"

#include <linux/wireless.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <fstream>
#include <limits>
#include <sstream>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace velq::nettools
{

namespace
{

class AnySocket
{
public:
    AnySocket() = default;
    AnySocket(const AnySocket &) = delete;
    AnySocket &operator=(const AnySocket &) = delete;
    ~AnySocket()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }

    int get() const { return m_descriptor; }

private:
    int m_descriptor = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
};

// In /proc/net/wireless, "wlan0: 0000   54.  -56.  -256 …": status, quality, level. 0 when unknown.
int signalOf(const std::string &device)
{
    std::ifstream file("/proc/net/wireless");
    for (std::string line; std::getline(file, line);) {
        std::istringstream words(line);
        std::string name;
        std::string skipped;
        double level = 0;
        if (words >> name && name == device + ":" && words >> skipped >> skipped >> level)
            return static_cast<int>(level);
    }
    return 0;
}

// A device in no network has an empty name for it.
std::optional<WifiNetwork> networkOf(const std::string &device)
{
    const AnySocket socket;
    std::array<char, IW_ESSID_MAX_SIZE + 1> name{};
    iwreq request{};
    device.copy(request.ifr_name, IFNAMSIZ - 1);
    request.u.essid.pointer = name.data();
    request.u.essid.length = IW_ESSID_MAX_SIZE;
    if (ioctl(socket.get(), SIOCGIWESSID, &request) != 0 || request.u.essid.flags == 0
        || request.u.essid.length == 0)
        return std::nullopt;
    WifiNetwork network;
    network.name.assign(name.data(), std::min<size_t>(request.u.essid.length, IW_ESSID_MAX_SIZE));
    network.signal = signalOf(device);
    return network;
}

} // namespace

std::optional<WifiState> kernelWifi()
{
    const auto tables = readInterfaces();
    if (!tables)
        throw Refusal(std::string("the kernel cannot be asked: ") + std::strerror(errno));
    std::optional<WifiState> wifi;
    for (const Port &port : portsOf(tables->links)) {
        if (port.kind != Port::Kind::Wireless || (wifi && wifi->network))
            continue;
        const bool up = (tables->link(port.index)->flags & IFF_UP) != 0;
        if (!wifi)
            wifi = WifiState{up, std::nullopt};
        wifi->on = wifi->on || up;
        wifi->network = up ? networkOf(port.device) : std::nullopt;
    }
    return wifi;
}

} // namespace velq::nettools
