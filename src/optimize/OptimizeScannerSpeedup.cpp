#include "common/Text.h"
#include "diagnosis/NetworkScanner.h"
#include "optimize/OptimizeResults.h"
#include "optimize/OptimizeScanner.h"
#include "shell/CommandLine.h"

#include <array>

namespace velq
{

namespace
{

// A public resolver that has answered for many years.
constexpr std::array resolvers{QLatin1String("8.8.8.8")};

bool isPutInFront(const QString &service)
{
    return service.contains(QLatin1String("Ethernet")) || service.contains(QLatin1String("Wi-Fi"));
}

} // namespace

void OptimizeScanner::speedup()
{
    const qint64 found = errorStatus();
    if (stopFixFlag())
        return;
    if ((found & CardPriorityProblem) != 0)
        preferEthernet();
    const QString device = NetworkScanner::currentNetworkInterface();
    const QString service = NetworkScanner::networkServiceForInterface(device);
    if (stopFixFlag())
        return;
    if ((found & MTUProblem) != 0)
        resetMTU(device);
    // A full card cache is left for the scan to find again: nothing here can empty it.
    if (stopFixFlag())
        return;
    if ((found & NameServerProblem) != 0)
        replaceNameServer(service);
    scan();
}

// Names are given as they are: one with blanks comes apart, and any kind of Ethernet counts as the
// Ethernet in front.
void OptimizeScanner::preferEthernet() const
{
    QString line = QStringLiteral("sudo networksetup -ordernetworkservices Ethernet Wi-Fi");
    for (const NetworkService &each : std::as_const(NetworkScanner::shareScanner().services())) {
        if (!isPutInFront(each.name))
            line += u' ' + shown(each.name);
    }
    (void)outputAsRoot(line);
    setResult(optimizeresults::CardPriority,
              optimizeresults::lines()[optimizeresults::CardPriority].fine);
}

void OptimizeScanner::resetMTU(const QString &device) const
{
    (void)outputAsRoot(QStringLiteral("networksetup -setMTU %1 1500").arg(shown(device)));
    setResult(optimizeresults::MTU, optimizeresults::lines()[optimizeresults::MTU].fine);
}

void OptimizeScanner::replaceNameServer(const QString &service) const
{
    QString line = QStringLiteral("sudo networksetup -setdnsservers %1").arg(shown(service));
    for (const QLatin1String resolver : resolvers)
        line += u' ' + resolver;
    (void)outputAsRoot(line);
    setResult(optimizeresults::NameServers,
              optimizeresults::lines()[optimizeresults::NameServers].fine);
}

} // namespace velq
