#include "nettools/networksetup/KernelPorts.h"

#include <linux/if_arp.h>

#include <array>
#include <fstream>
#include <optional>
#include <span>
#include <unistd.h>

namespace velq::nettools
{

namespace
{

using rtnetlink::Link;

bool exists(const std::string &path)
{
    return access(path.c_str(), F_OK) == 0;
}

std::string deviceTypeIn(const std::string &folder)
{
    constexpr std::string_view key = "DEVTYPE=";
    std::ifstream file(folder + "/uevent");
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with(key))
            return line.substr(key.size());
    }
    return {};
}

std::optional<Port::Kind> kindOf(const Link &link)
{
    if (link.isLoopback())
        return Port::Kind::Loopback;
    if (link.kind == "veth" && link.master == 0)
        return Port::Kind::Wired;
    const std::string folder = "/sys/class/net/" + link.name;
    if (!exists(folder + "/device"))
        return std::nullopt;
    const std::string type = deviceTypeIn(folder);
    if (type == "wlan" || exists(folder + "/phy80211"))
        return Port::Kind::Wireless;
    if (type == "wwan")
        return Port::Kind::Modem;
    if (type == "bluetooth")
        return Port::Kind::Bluetooth;
    return link.hardwareType == ARPHRD_ETHER ? std::optional(Port::Kind::Wired) : std::nullopt;
}

std::string addressText(std::span<const uint8_t> address)
{
    constexpr std::string_view digits = "0123456789abcdef";
    std::string text;
    for (const uint8_t octet : address) {
        text += text.empty() ? "" : ":";
        text += digits[octet / 16];
        text += digits[octet % 16];
    }
    return text;
}

} // namespace

std::vector<Port> portsOf(const std::vector<Link> &links)
{
    std::vector<Port> ports;
    for (const Link &link : links) {
        const auto kind = kindOf(link);
        if (kind && isPlainDeviceName(link.name))
            ports.push_back({*kind, link.index, link.name, "", addressText(link.hardwareAddress)});
    }
    namePorts(ports);
    return ports;
}

} // namespace velq::nettools
