#include "common/PublicHosts.h"
#include "common/Text.h"
#include "diagnosis/BinarySwith.h"
#include "diagnosis/NetworkScanner.h"
#include "shell/CommandLine.h"

#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace velq
{

namespace
{

// How many octets belong to the network: those before the first that is not full.
qsizetype prefixLength(const QString &mask)
{
    const QStringList octets = BinarySwith::sexadecimalToIPv4(mask).split(u'.');
    const auto partial =
        std::ranges::find_if(octets, [](const QString &octet) { return octet.toInt() != 255; });
    return partial == octets.cend() ? 0 : std::distance(octets.cbegin(), partial);
}

QStringList network(const QString &address, qsizetype octets)
{
    return address.split(u'.').mid(0, octets);
}

} // namespace

bool NetworkScanner::checkIPIsWrong() const
{
    const QString address = getIPAddressForService(currentNetworkInterface());
    const QString gateway = getRouteAddress();
    const QString mask = getNetmask();
    const qsizetype octets = prefixLength(mask);
    return address.isNull() || gateway.isNull() || mask.isNull()
        || network(address, octets) != network(gateway, octets);
}

bool NetworkScanner::hasRouterIP() const
{
    return std::ranges::any_of(m_services, [](const NetworkService &service) {
        const QStringList routers =
            outputOf(
                QStringLiteral("networksetup -getinfo %1|grep 'Router:'|awk -F': ' '{print $2}'")
                    .arg(shown(service.netType)))
                .split(u'\n');
        return std::ranges::any_of(routers, [](const QString &router) {
            return !router.isEmpty() && router != QLatin1String("none");
        });
    });
}

QString NetworkScanner::getRouteAddress() const
{
    // Any character between the numbers: a text that merely looks like an address will do.
    static const QRegularExpression addressLike(QStringLiteral("[0-9]+.[0-9]+.[0-9]+.[0-9]+"),
                                                QRegularExpression::CaseInsensitiveOption);
    const QString gateway =
        outputOf(QStringLiteral("route get default | grep gateway | awk '{print $2}'"))
            .remove(u'\n');
    return addressLike.match(gateway).hasMatch() ? gateway : QString();
}

QString NetworkScanner::getNetmask() const
{
    const QString device =
        outputOf(QStringLiteral("route get default | grep interface | awk '{print $2}'"))
            .remove(u'\n');
    return outputOf(
               QStringLiteral("ifconfig %1 | grep netmask | awk '{print $4}'").arg(shown(device)))
        .remove(QStringLiteral("0x"))
        .remove(u'\n');
}

bool NetworkScanner::isDNSServiceError() const
{
    return outputOf(QStringLiteral("nslookup ") + publichosts::nameServerProbe)
        .contains(QLatin1String("no servers"));
}

} // namespace velq
