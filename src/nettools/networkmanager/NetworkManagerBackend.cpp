#include "nettools/networkmanager/NetworkManagerBackend.h"

#include "nettools/networkmanager/Application.h"
#include "nettools/networkmanager/ManagedPorts.h"
#include "nettools/networkmanager/ProfileEdits.h"
#include "nettools/networkmanager/Switch.h"
#include "nettools/networkmanager/Told.h"

#include <algorithm>
#include <utility>

namespace velq::nettools
{

namespace
{

// Room below and between, for what other programs put there.
constexpr int64_t firstMetric = 50;
constexpr int64_t metricStep = 10;

// The lease of an earlier time may still be told of while the next one is asked for.
bool hasLease(const Device &device)
{
    const auto &addresses = device.ip4["AddressData"].list();
    return !device.lease.empty() && std::ranges::any_of(addresses, [&](const Value &entry) {
        return entry["address"].text() == device.lease;
    });
}

bool asks(const Device &device, const std::string &server)
{
    return std::ranges::any_of(device.ip4["NameserverData"].list(), [&](const Value &entry) {
        return entry["address"].text() == server;
    });
}

bool usesServers(const Device &device, const std::vector<std::string> &servers)
{
    // A lease may bring addresses that are no good; without it, there is nothing to wait for.
    const auto &leased = device.leaseServers;
    if (servers.empty())
        return leased.empty() || std::ranges::any_of(leased, [&](const std::string &server) {
                   return asks(device, server);
               });
    return std::ranges::all_of(servers, [&](const std::string &server) {
        // IPv6 addresses have more than one spelling, and come at their own time.
        return server.find(':') != std::string::npos || asks(device, server);
    });
}

bool hasMetric(const Device &device, int64_t metric)
{
    const auto &routes = device.ip4["RouteData"].list();
    return std::ranges::all_of(routes, [&](const Value &route) {
        return route["dest"].text() != "0.0.0.0" || route["metric"].number(metric) == metric;
    });
}

} // namespace

std::unique_ptr<Backend> openNetworkManager()
{
    auto manager = told(&NetworkManager::connect);
    return manager ? std::make_unique<NetworkManagerBackend>(*std::move(manager)) : nullptr;
}

NetworkManagerBackend::NetworkManagerBackend(NetworkManager manager)
    : m_manager(std::move(manager))
    , m_profiles(m_manager)
    , m_ports(portsOf(m_manager.state()))
{
}

ReadProfile NetworkManagerBackend::profileToChange(const Port &port)
{
    const Device *device = deviceOf(port);
    if (auto profile = m_profiles.best(*device))
        return profile;
    if (port.kind == Port::Kind::Wired)
        return m_profiles.create(*device, port.name);
    throw Refusal(port.name + " uses no network now, and knows none that is in reach");
}

void NetworkManagerBackend::setEnabled(const Port &port, bool enabled)
{
    const Device *device = deviceOf(port);
    if (device == nullptr || isEnabled(port) == enabled)
        return;
    told([&] {
        const std::string path = device->path;
        if (enabled)
            switchOn(m_manager, m_profiles, port, path);
        else
            switchOff(m_manager, m_profiles, port, path);
    });
}

void NetworkManagerBackend::change(const Port &port, const Profile &profile,
                                   const std::vector<Edit> &edits, const InEffect &inEffect)
{
    const std::string path = deviceOf(port)->path;
    const bool first = m_profiles.change(profile, edits);
    try {
        apply(m_manager, port, path, profile, inEffect);
    } catch (const Refusal &) {
        takeBack(port, profile, first);
        throw;
    } catch (const BusError &error) {
        takeBackAfter(error, port, profile, first);
    }
}

void NetworkManagerBackend::takeBackAfter(const BusError &error, const Port &port,
                                          const Profile &profile, bool first)
{
    if (tryTakeBack(port, profile, first))
        throw BusError(error);
    throw Refusal(sentence(error) + "; what is kept of " + port.name
                  + " may have changed, and -restore takes that back");
}

bool NetworkManagerBackend::tryTakeBack(const Port &port, const Profile &profile, bool first)
{
    try {
        (void)m_manager.readOnceBack();
        writeBack(profile, first);
    } catch (const BusError &) {
        return false;
    }
    try {
        applyAsItIs(port, profile);
    } catch (const std::runtime_error &) {
        // What could not be brought into effect before need not be now.
        return true;
    }
    return true;
}

void NetworkManagerBackend::takeBack(const Port &port, const Profile &profile, bool first)
{
    writeBack(profile, first);
    applyAsItIs(port, profile);
}

void NetworkManagerBackend::writeBack(const Profile &profile, bool first)
{
    m_profiles.undo(profile);
    if (first)
        m_profiles.forget(profile);
}

void NetworkManagerBackend::applyAsItIs(const Port &port, const Profile &profile)
{
    if (const Device *device = deviceOf(port); device != nullptr)
        apply(m_manager, port, std::string(device->path), profile,
              [](const Device &) { return true; });
}

void NetworkManagerBackend::setDhcp(const Port &port)
{
    told([&] {
        const ReadProfile profile = profileToChange(port);
        const Device device = *deviceOf(port);
        const Value &ipv4 = profile->settings["ipv4"];
        const bool changes = ipv4Method(profile->settings) != ServiceInfo::Method::Automatic
            || !ipv4["address-data"].list().empty() || !ipv4["gateway"].text().empty();
        if (!changes && hasLease(device) && isLeaseFresh(device))
            return;
        const bool first = changes && m_profiles.change(*profile, dhcpEdits());
        try {
            applyOrActivate(m_manager, port, device.path, *profile, hasLease);
        } catch (const NotInTime &late) {
            throw Refusal(std::string(late.what()) + "; it goes on asking for an address by DHCP");
        } catch (const BusError &error) {
            if (!changes)
                throw;
            takeBackAfter(error, port, *profile, first);
        }
    });
}

void NetworkManagerBackend::setDnsServers(const Port &port, const std::vector<std::string> &servers)
{
    told([&] {
        change(port, *profileToChange(port), dnsEdits(servers),
               [&](const Device &device) { return usesServers(device, servers); });
    });
}

void NetworkManagerBackend::setMtu(const Port &port, uint32_t mtu)
{
    told([&] {
        const ReadProfile profile = profileToChange(port);
        change(port, *profile, mtuEdits(*deviceOf(port), mtu),
               [&](const Device &device) { return device.mtu == mtu; });
    });
}

void NetworkManagerBackend::setMetric(const Port &port, int64_t metric,
                                      std::vector<Change> &changed)
{
    const ReadProfile profile = m_profiles.best(*deviceOf(port));
    if (!profile || profile->settings["ipv4"]["route-metric"].number(-1) == metric)
        return;
    const std::string path = deviceOf(port)->path;
    const bool first = m_profiles.change(*profile, metricEdits(metric));
    changed.push_back({port, profile, first});
    apply(m_manager, port, path, *profile,
          [&](const Device &device) { return hasMetric(device, metric); });
}

void NetworkManagerBackend::order(const std::vector<Port> &first)
{
    told([&] {
        std::vector<Change> changed;
        try {
            int64_t metric = firstMetric;
            for (const Port &port : first) {
                setMetric(port, metric, changed);
                metric += metricStep;
            }
            for (const Row &row : inOrder()) {
                const bool named =
                    std::ranges::find(first, row.port.device, &Port::device) != first.end();
                if (!named && row.metric < metric)
                    setMetric(row.port, metric, changed);
            }
        } catch (const std::runtime_error &) {
            // Services may share a profile: what it was before the first change comes last.
            std::ranges::reverse(changed);
            for (const auto &[port, profile, copied] : changed) {
                if (!tryTakeBack(port, *profile, copied))
                    break;
            }
            throw;
        }
    });
}

void NetworkManagerBackend::restore(const Port &port, const Device &device, const Profile &profile)
{
    if (!m_profiles.restore(profile))
        throw Refusal("the copy of the settings of " + port.name + " is damaged");
    const Value restored = m_profiles.settingsOf(profile);
    if (restored.isSet() && mtuIn(restored, device) != mtuIn(profile.settings, device))
        activateAnew(m_manager, port, device.path, profile);
    else if (restored.isSet())
        apply(m_manager, port, device.path, profile, [](const Device &) { return true; });
    m_profiles.forget(profile);
}

void NetworkManagerBackend::restore(const Port &port)
{
    told([&] {
        const Device device = *deviceOf(port);
        bool any = false;
        for (const ReadProfile &profile : m_profiles.candidates(device)) {
            if (!m_profiles.hasCopy(*profile))
                continue;
            any = true;
            restore(port, device, *profile);
        }
        if (!any)
            throw Refusal("nothing has been changed for " + port.name
                          + " that could be taken back");
    });
}

} // namespace velq::nettools
