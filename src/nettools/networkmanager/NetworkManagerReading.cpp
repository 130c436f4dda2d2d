#include "nettools/networkmanager/NetworkManagerBackend.h"
#include "nettools/networkmanager/ProfileEdits.h"
#include "nettools/networkmanager/Switch.h"
#include "nettools/networkmanager/Told.h"

#include <algorithm>
#include <utility>

namespace velq::nettools
{

namespace
{

// Null when it has none but that of the link, which leads nowhere.
const Value *firstAddress(const Value &config)
{
    const auto &list = config["AddressData"].list();
    const auto found = std::ranges::find_if(
        list, [](const Value &entry) { return !entry["address"].text().starts_with("fe80:"); });
    return found != list.end() ? &*found : nullptr;
}

void addAddresses(ServiceInfo &info, const Device &device)
{
    if (const Value *address = firstAddress(device.ip4)) {
        info.address = (*address)["address"].text();
        info.prefixLength = static_cast<uint8_t>((*address)["prefix"].number(0));
    }
    if (const Value *address = firstAddress(device.ip6))
        info.address6 = (*address)["address"].text();
    info.router = device.ip4["Gateway"].text();
    info.router6 = device.ip6["Gateway"].text();
}

ServiceInfo loopbackInfo()
{
    ServiceInfo info;
    info.method = ServiceInfo::Method::Manual;
    info.address = "127.0.0.1";
    info.prefixLength = 8;
    info.method6 = ServiceInfo::Method::Manual;
    info.address6 = "::1";
    return info;
}

int64_t metricOf(const Device &device, std::span<const ReadProfile> candidates)
{
    return candidates.empty() ? metricIn(Value(), device)
                              : metricIn(candidates.front()->settings, device);
}

} // namespace

const Device *NetworkManagerBackend::deviceOf(const Port &port) const
{
    const auto &devices = m_manager.state().devices;
    const auto found = std::ranges::find(devices, port.device, &Device::interface);
    return found != devices.end() && port.kind != Port::Kind::Loopback ? &*found : nullptr;
}

std::vector<NetworkManagerBackend::Row> NetworkManagerBackend::inOrder() const
{
    std::vector<Port> ports;
    std::vector<const Device *> devices;
    for (const Port &port : m_ports) {
        if (const Device *device = deviceOf(port)) {
            ports.push_back(port);
            devices.push_back(device);
        }
    }
    const auto candidates = m_profiles.candidates(devices);
    std::vector<Row> rows;
    for (size_t i = 0; i < devices.size(); ++i)
        rows.push_back({std::move(ports[i]), metricOf(*devices[i], candidates[i]),
                        isSwitchedOn(m_manager.state(), *devices[i], candidates[i])});
    std::ranges::stable_sort(rows, {}, &Row::metric);
    return rows;
}

std::vector<Service> NetworkManagerBackend::services()
{
    return told([&] {
        std::vector<Service> services;
        for (Row &row : inOrder())
            services.push_back({std::move(row.port), row.enabled});
        return services;
    });
}

bool NetworkManagerBackend::isEnabled(const Port &port)
{
    return told([&] {
        const Device *device = deviceOf(port);
        return device == nullptr || isSwitchedOn(m_manager.state(), *device, m_profiles);
    });
}

ServiceInfo NetworkManagerBackend::info(const Port &port)
{
    return told([&] {
        const Device *device = deviceOf(port);
        if (device == nullptr)
            return loopbackInfo();
        ServiceInfo info;
        if (const auto profile = m_profiles.best(*device)) {
            info.method = ipv4Method(profile->settings);
            info.method6 = ipv6Method(profile->settings);
            info.clientId = profile->settings["ipv4"]["dhcp-client-id"].text();
        }
        addAddresses(info, *device);
        return info;
    });
}

std::vector<std::string> NetworkManagerBackend::dnsServers(const Port &port)
{
    return told([&] {
        const Device *device = deviceOf(port);
        const auto profile = device != nullptr ? m_profiles.best(*device) : nullptr;
        return profile ? dnsServersIn(profile->settings) : std::vector<std::string>();
    });
}

Mtu NetworkManagerBackend::mtu(const Port &port)
{
    return told([&] {
        const Device *device = deviceOf(port);
        if (device == nullptr)
            return Mtu{65536, 0};
        const auto profile = m_profiles.best(*device);
        return Mtu{device->mtu, profile ? mtuIn(profile->settings, *device) : 0};
    });
}

} // namespace velq::nettools
