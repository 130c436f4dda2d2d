#include "nettools/networkmanager/ProfileEdits.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <cstring>

namespace velq::nettools
{

namespace
{

using Method = ServiceInfo::Method;

struct MethodName {
    std::string_view name;
    Method method;
};

constexpr std::array methods = std::to_array<MethodName>({
    {"auto", Method::Automatic},
    {"dhcp", Method::Automatic},
    {"manual", Method::Manual},
    {"shared", Method::Manual},
    {"link-local", Method::LinkLocal},
    {"disabled", Method::Off},
    {"ignore", Method::Off},
});

Method methodIn(const Value &group)
{
    const auto *found = std::ranges::find(methods, group["method"].text(), &MethodName::name);
    return found != methods.end() ? found->method : Method::Automatic;
}

std::string ipv4Text(const Value &number)
{
    const auto address = static_cast<uint32_t>(number.number(0));
    std::array<char, INET_ADDRSTRLEN> text{};
    return inet_ntop(AF_INET, &address, text.data(), text.size());
}

std::string ipv6Text(const Value &bytes)
{
    Ipv6Bytes address{};
    std::ranges::transform(
        bytes.list().begin(),
        bytes.list().begin()
            + static_cast<std::ptrdiff_t>(std::min(bytes.list().size(), address.size())),
        address.begin(), [](const Value &octet) { return static_cast<uint8_t>(octet.number(0)); });
    std::array<char, INET6_ADDRSTRLEN> text{};
    return inet_ntop(AF_INET6, address.data(), text.data(), text.size());
}

// The group that has the packet size of what the device sends.
const char *linkGroup(const Device &device)
{
    switch (device.type) {
    case Device::WiFi:
        return "802-11-wireless";
    case Device::Modem:
        return "gsm";
    case Device::InfiniBand:
        return "infiniband";
    default:
        return "802-3-ethernet";
    }
}

// What NetworkManager gives the routes of such a device by itself.
int64_t usualMetric(const Device &device)
{
    switch (device.type) {
    case Device::WiFi:
        return 600;
    case Device::Modem:
        return 700;
    case Device::Bluetooth:
        return 750;
    case Device::Bridge:
        return 425;
    case Device::Bond:
        return 300;
    case Device::Team:
        return 350;
    case Device::Vlan:
        return 400;
    default:
        return 100;
    }
}

template <typename Addresses> std::optional<SettingValue> unlessEmpty(const Addresses &addresses)
{
    return addresses.empty() ? std::nullopt : std::optional<SettingValue>(addresses);
}

} // namespace

Method ipv4Method(const Value &settings)
{
    return methodIn(settings["ipv4"]);
}

Method ipv6Method(const Value &settings)
{
    return methodIn(settings["ipv6"]);
}

std::vector<Edit> dhcpEdits()
{
    return {{"ipv4", "method", "auto"},
            {"ipv4", "addresses", {}},
            {"ipv4", "address-data", {}},
            {"ipv4", "gateway", {}}};
}

std::vector<std::string> dnsServersIn(const Value &settings)
{
    std::vector<std::string> servers;
    std::ranges::transform(settings["ipv4"]["dns"].list(), std::back_inserter(servers), ipv4Text);
    std::ranges::transform(settings["ipv6"]["dns"].list(), std::back_inserter(servers), ipv6Text);
    return servers;
}

std::vector<Edit> dnsEdits(const std::vector<std::string> &servers)
{
    std::vector<uint32_t> ipv4;
    std::vector<Ipv6Bytes> ipv6;
    for (const std::string &server : servers) {
        in_addr address{};
        Ipv6Bytes bytes{};
        if (inet_pton(AF_INET, server.c_str(), &address) == 1)
            ipv4.push_back(address.s_addr);
        else if (inet_pton(AF_INET6, server.c_str(), bytes.data()) == 1)
            ipv6.push_back(bytes);
    }
    const bool instead = !servers.empty();
    // The same servers are there a second time in a newer spelling, which would win.
    return {{"ipv4", "dns", unlessEmpty(ipv4)},
            {"ipv4", "dns-data", {}},
            {"ipv4", "ignore-auto-dns", instead},
            {"ipv6", "dns", unlessEmpty(ipv6)},
            {"ipv6", "dns-data", {}},
            {"ipv6", "ignore-auto-dns", instead}};
}

uint32_t mtuIn(const Value &settings, const Device &device)
{
    return static_cast<uint32_t>(settings[linkGroup(device)]["mtu"].number(0));
}

std::vector<Edit> mtuEdits(const Device &device, uint32_t mtu)
{
    return {{linkGroup(device), "mtu", mtu}};
}

int64_t metricIn(const Value &settings, const Device &device)
{
    const int64_t metric = settings["ipv4"]["route-metric"].number(-1);
    return metric >= 0 ? metric : usualMetric(device);
}

std::vector<Edit> metricEdits(int64_t metric)
{
    return {{"ipv4", "route-metric", metric}, {"ipv6", "route-metric", metric}};
}

std::vector<Edit> autoconnectEdits(bool on)
{
    return {{"connection", "autoconnect", on}};
}

} // namespace velq::nettools
