#include "nettools/networksetup/KernelBackend.h"

#include "nettools/lib/ResolverFile.h"
#include "nettools/networksetup/KernelPorts.h"
#include "nettools/networksetup/NameServers.h"
#include "nettools/networksetup/SystemDhcp.h"

#include <linux/if.h>
#include <linux/if_addr.h>
#include <linux/rtnetlink.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <limits>
#include <utility>

namespace velq::nettools
{

namespace
{

using rtnetlink::Link;
using rtnetlink::Route;
using rtnetlink::Socket;

constexpr uint32_t noRoute = std::numeric_limits<uint32_t>::max();

[[noreturn]] void refuse(const std::string &what)
{
    throw Refusal(what + ": " + std::strerror(errno));
}

Socket openSocket()
{
    auto socket = Socket::open();
    if (!socket)
        refuse("the kernel cannot be asked");
    return *std::move(socket);
}

std::optional<Route> defaultRouteOf(uint32_t link, uint8_t family)
{
    std::optional<Route> best;
    auto socket = openSocket();
    (void)rtnetlink::readDefaultRoutes(socket, family, [&](const Route &route) {
        const bool through = std::ranges::any_of(
            route.nextHops, [&](const auto &hop) { return hop.interface == link; });
        if (route.family == family && route.table == RT_TABLE_MAIN && through
            && (!best || route.priority < best->priority))
            best = route;
        return Socket::Visit::Continue;
    });
    return best;
}

uint32_t metricOf(const Port &port)
{
    const auto route = defaultRouteOf(port.index, AF_INET);
    return route ? route->priority : noRoute;
}

std::string gatewayOf(uint32_t link, uint8_t family)
{
    const auto route = defaultRouteOf(link, family);
    return route ? route->nextHops.front().gateway.text() : "";
}

} // namespace

std::unique_ptr<Backend> openKernel()
{
    auto tables = readInterfaces();
    if (!tables)
        refuse("the kernel cannot be asked");
    return std::make_unique<KernelBackend>(*std::move(tables));
}

KernelBackend::KernelBackend(KernelTables tables)
    : m_tables(std::move(tables))
    , m_ports(portsOf(m_tables.links))
{
}

const Link &KernelBackend::linkOf(const Port &port) const
{
    return *m_tables.link(port.index);
}

std::vector<Service> KernelBackend::services()
{
    std::vector<Service> services;
    for (const Port &port : m_ports) {
        if (port.kind != Port::Kind::Loopback)
            services.push_back({port, isEnabled(port)});
    }
    std::ranges::stable_sort(services, {},
                             [](const Service &service) { return metricOf(service.port); });
    return services;
}

bool KernelBackend::isEnabled(const Port &port)
{
    return (linkOf(port).flags & IFF_UP) != 0;
}

void KernelBackend::setEnabled(const Port &port, bool enabled)
{
    auto socket = openSocket();
    if (!rtnetlink::setLinkUp(socket, port.index, enabled))
        refuse(port.name + " cannot be switched " + (enabled ? "on" : "off"));
}

ServiceInfo KernelBackend::info(const Port &port)
{
    ServiceInfo info;
    for (const auto &address : m_tables.addresses) {
        if (address.interface != port.index || address.scope == RT_SCOPE_LINK)
            continue;
        const bool isFirst = (address.family == AF_INET ? info.address : info.address6).empty();
        const auto method = (address.flags & IFA_F_PERMANENT) != 0 ? ServiceInfo::Method::Manual
                                                                   : ServiceInfo::Method::Automatic;
        if (address.family == AF_INET && isFirst) {
            info.address = address.local.text();
            info.prefixLength = address.prefixLength;
            info.method = method;
        } else if (isFirst) {
            info.address6 = address.local.text();
            info.method6 = method;
        }
    }
    info.router = gatewayOf(port.index, AF_INET);
    info.router6 = gatewayOf(port.index, AF_INET6);
    return info;
}

void KernelBackend::setDhcp(const Port &port)
{
    if (!isEnabled(port))
        setEnabled(port, true);
    askForLease(port);
}

std::vector<std::string> KernelBackend::dnsServers(const Port &)
{
    return readNameServers();
}

void KernelBackend::setDnsServers(const Port &port, const std::vector<std::string> &servers)
{
    writeNameServers(port, servers);
}

Mtu KernelBackend::mtu(const Port &port)
{
    return {linkOf(port).mtu, 0};
}

void KernelBackend::setMtu(const Port &port, uint32_t mtu)
{
    auto socket = openSocket();
    if (!rtnetlink::setLinkMtu(socket, port.index, mtu))
        refuse("the MTU of " + port.name + " cannot be set");
}

void KernelBackend::order(const std::vector<Port> &)
{
    throw Refusal("NetworkManager does not run, and nothing else here keeps an order of services");
}

void KernelBackend::restore(const Port &port)
{
    throw Refusal("NetworkManager does not run, and so no settings of " + port.name
                  + " are kept that could be taken back");
}

} // namespace velq::nettools
