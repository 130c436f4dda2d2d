#include "common/PublicHosts.h"
#include "common/Text.h"
#include "diagnosis/HardwarePorts.h"
#include "diagnosis/NetworkScanner.h"
#include "shell/CommandLine.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <ifaddrs.h>
#include <memory>

namespace velq
{

namespace
{

QString oneLine(QString output)
{
    return output.remove(u'\n');
}

QString dotted(const sockaddr_in &address)
{
    std::array<char, INET_ADDRSTRLEN> text{};
    return QString::fromLatin1(inet_ntop(AF_INET, &address.sin_addr, text.data(), text.size()));
}

// Nobody else may change the inventory that a scan reads, so the pointer stays good for a look.
template <typename Predicate> const NetworkService *firstService(Predicate matches)
{
    const QList<NetworkService> &services = NetworkScanner::shareScanner().services();
    const auto found = std::ranges::find_if(services, matches);
    return found == services.cend() ? nullptr : &*found;
}

} // namespace

QString NetworkScanner::networkInterfaceForService(const QString &service)
{
    return oneLine(outputOf(QStringLiteral("networksetup -listallhardwareports|grep -A 1 '%1'|grep "
                                           "'Device'|awk '{print $2}'")
                                .arg(shown(service))));
}

QString NetworkScanner::networkServiceForInterface(const QString &interface)
{
    const NetworkService *found =
        firstService([&](const NetworkService &each) { return each.interface == interface; });
    return found == nullptr ? QString() : found->netType;
}

bool NetworkScanner::networkServiceIsActive(const QString &interface)
{
    const QString status = outputOf(
        QStringLiteral("ifconfig %1 |grep 'status'|awk '{print $2}'").arg(shown(interface)));
    return oneLine(status) == QLatin1String("active");
}

bool NetworkScanner::hasConnectivity()
{
    net_connect =
        outputOf(QStringLiteral("ping -c2 ") + publichosts::probe).contains(QLatin1String("time="));
    return net_connect;
}

QString NetworkScanner::currentNetworkInterface()
{
    if (net_connect) {
        const QString output =
            outputOf(QStringLiteral("route -n get ") + publichosts::probe
                     + QStringLiteral("|grep 'interface' | awk -F ': ' '{print $2}'"));
        return output.isEmpty() ? QStringLiteral("") : oneLine(output);
    }
    const NetworkService *active = firstService(&NetworkService::isActive);
    return active == nullptr || active->interface.isNull() ? QStringLiteral("") : active->interface;
}

QStringList NetworkScanner::networkServices() const
{
    // A headline first, and behind the last line feed an empty piece.
    const QStringList lines =
        outputOf(QStringLiteral("networksetup -listallnetworkservices")).split(u'\n');
    return lines.mid(1, std::max<qsizetype>(0, lines.size() - 2));
}

void NetworkScanner::searchNetworkSerices()
{
    for (NetworkService &service : hardwarePorts()) {
        service.enabled = isEnabledForService(service.netType);
        service.isActive = networkServiceIsActive(service.interface);
        service.ipAdds = getIPAddressForService(service.interface);
        m_services.append(service);
    }
}

QString NetworkScanner::getIPAddressForService(const QString &interface) const
{
    ifaddrs *first = nullptr;
    if (getifaddrs(&first) != 0)
        return {};
    const std::unique_ptr<ifaddrs, decltype(&freeifaddrs)> owner(first, &freeifaddrs);
    QString address;
    for (const ifaddrs *each = first; each != nullptr; each = each->ifa_next) {
        if (each->ifa_addr == nullptr || each->ifa_addr->sa_family != AF_INET
            || interface != QString::fromUtf8(each->ifa_name))
            continue;
        address = dotted(*reinterpret_cast<const sockaddr_in *>(each->ifa_addr));
    }
    return address;
}

bool NetworkScanner::isEnabledForService(const QString &service) const
{
    return outputOf(QStringLiteral("networksetup -getnetworkserviceenabled %1").arg(shown(service)))
        .contains(QLatin1String("Enabled"));
}

} // namespace velq
