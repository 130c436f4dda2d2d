#include "monitor/MenuInterface.h"

#include "common/Reachability.h"
#include "diagnosis/HardwarePorts.h"
#include "diagnosis/NetworkScanner.h"
#include "shell/CommandLine.h"

namespace velq
{

namespace
{

// All of them before the first change.
QList<NetworkService> portsWithTheirState()
{
    QList<NetworkService> ports = hardwarePorts();
    for (NetworkService &port : ports) {
        port.enabled = NetworkScanner::shareScanner().isEnabledForService(port.netType);
        port.isActive = NetworkScanner::networkServiceIsActive(port.interface);
    }
    return ports;
}

// Whether it helped, the next probe tells.
void changeAsRoot(const QString &commandLine)
{
    (void)outputAsRoot(commandLine);
}

} // namespace

bool MenuInterface::networkConnect()
{
    const auto internet = Reachability::reachabilityForInternetConnection();
    return internet != nullptr && internet->currentReachabilityStatus() == NetworkReachable;
}

void MenuInterface::speedUp()
{
    if (networkConnect())
        return;
    for (const NetworkService &port : portsWithTheirState()) {
        if (!port.isActive)
            changeAsRoot(QStringLiteral("ifconfig %1 up").arg(port.interface));
        if (!port.enabled)
            changeAsRoot(
                QStringLiteral("networksetup -setnetworkserviceenabled %1 on").arg(port.netType));
    }
    changeAsRoot(QStringLiteral("networksetup -setdhcp Ethernet"));
    changeAsRoot(QStringLiteral("networksetup -setdhcp Wi-Fi"));
}

} // namespace velq
