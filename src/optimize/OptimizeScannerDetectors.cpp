#include "common/PingedHosts.h"
#include "common/PublicHosts.h"
#include "common/Text.h"
#include "diagnosis/NetworkScanner.h"
#include "optimize/OptimizeScanner.h"
#include "platform/PropertyValue.h"
#include "platform/UserDefaults.h"
#include "shell/CommandLine.h"

#include <QDateTime>
#include <QTimeZone>

#include <algorithm>

namespace velq
{

namespace
{

constexpr qint64 usualMTU = 1500;
constexpr QLatin1String timeout("Request timeout");

bool hasAddress(const QString &device)
{
    return !outputOf(
                QStringLiteral("ifconfig %1 | grep 'inet '|awk '{print $2}'").arg(shown(device)))
                .isEmpty();
}

// The era in which dates are counted; so long ago as a flush that never was.
QDateTime startOfEra()
{
    return {QDate(2001, 1, 1), QTime(0, 0), QTimeZone::utc()};
}

} // namespace

bool OptimizeScanner::wouldSwitchNetwork() const
{
    const QString wired = NetworkScanner::networkInterfaceForService(QStringLiteral("Ethernet"));
    const QString wireless = NetworkScanner::networkInterfaceForService(QStringLiteral("Wi-Fi"));
    const bool wiredIsActive = NetworkScanner::networkServiceIsActive(wired);
    const bool wirelessIsActive = NetworkScanner::networkServiceIsActive(wireless);
    const bool wiredHasAddress = hasAddress(wired);
    const bool wirelessHasAddress = hasAddress(wireless);
    return wiredIsActive && wirelessIsActive && wiredHasAddress && wirelessHasAddress
        && NetworkScanner::currentNetworkInterface() == wireless;
}

QString OptimizeScanner::currentMTU()
{
    QString text = outputOf(QStringLiteral("ifconfig %1 |grep 'mtu' |awk '{print $4}'")
                                .arg(shown(NetworkScanner::currentNetworkInterface())));
    text.remove(u'\n');
    m_mtu = integerOfValue(text);
    return text;
}

bool OptimizeScanner::detectMTU()
{
    return integerOfValue(currentMTU()) != usualMTU;
}

qint64 OptimizeScanner::detectISPMaxMTU() const
{
    constexpr qint64 headers = 28; // of IPv4 and of the echo request
    constexpr qint64 largest = usualMTU - headers;
    qint64 size = largest;
    for (bool goesOn = true; goesOn;) {
        const QString output =
            outputOf(QStringLiteral("ping -c2 -D -s %1 ").arg(size) + publichosts::probe);
        goesOn = output.contains(timeout) && output.contains(QLatin1String("Unknown"));
        if (goesOn)
            size -= 2;
        if (stopScanFlag())
            return usualMTU;
    }
    return size + headers;
}

bool OptimizeScanner::shouldFlushNetworkCardCache() const
{
    constexpr qint64 day = 86400;
    const QDateTime flushed =
        UserDefaults::standardUserDefaults().dateForKey(QStringLiteral("cacheDate"));
    return (flushed.isValid() ? flushed : startOfEra()).secsTo(QDateTime::currentDateTimeUtc())
        >= day;
}

bool OptimizeScanner::dnsServerError() const
{
    return std::ranges::any_of(publichosts::pinged, [](QLatin1String host) {
        return outputOf(QStringLiteral("ping -c2 ") + host).contains(timeout);
    });
}

} // namespace velq
