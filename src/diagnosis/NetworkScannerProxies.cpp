#include "diagnosis/NetworkScanner.h"

#include "common/Text.h"
#include "scanner/NSButton_service.h"
#include "shell/CommandLine.h"

#include <algorithm>
#include <array>

namespace velq
{

namespace
{

// What the tool calls the proxies of a kind, in its commands "-getNAME" and "-setNAMEstate".
struct Kind {
    QLatin1String proxyType;
    QLatin1String name;
};

constexpr std::array kinds{
    Kind{QLatin1String("HTTP"), QLatin1String("webproxy")},
    Kind{QLatin1String("HTTPS"), QLatin1String("securewebproxy")},
    Kind{QLatin1String("Gopher"), QLatin1String("gopherproxy")},
    Kind{QLatin1String("Stream"), QLatin1String("streamingproxy")},
    Kind{QLatin1String("Socks"), QLatin1String("socksfirewallproxy")},
    Kind{QLatin1String("FTP"), QLatin1String("ftpproxy")},
};

// The values of the tool's report by their places: enabled, server, port, authenticated. It always
// has all four of a proxy that is on; what is missing all the same is absent.
std::optional<ProxyServer> enabledProxy(const Kind &kind, const QString &service)
{
    const QStringList lines =
        outputOf(QStringLiteral("networksetup -get%1 %2 | awk -F ': ' '{print $2}'")
                     .arg(kind.name, shown(service)))
            .split(u'\n');
    if (lines[0] != QLatin1String("Yes"))
        return std::nullopt;
    ProxyServer proxy;
    proxy.enabled = true;
    proxy.proxyType = kind.proxyType;
    proxy.serverIP = lines.value(1);
    proxy.port = lines.value(2);
    proxy.authenticated = lines.value(3) != QLatin1String("0");
    return proxy;
}

void switchProxy(const ProxyServer &proxy, const QString &service, QLatin1String state)
{
    const auto *const kind = std::ranges::find(kinds, proxy.proxyType, &Kind::proxyType);
    if (kind == kinds.end())
        return;
    (void)outputAsRoot(
        QStringLiteral("networksetup -set%1state %2 %3").arg(kind->name, shown(service), state));
}

} // namespace

const NetworkService *NetworkScanner::currentService() const
{
    const QString device = currentNetworkInterface();
    const auto found = std::ranges::find(m_services, device, &NetworkService::interface);
    return found == m_services.cend() ? nullptr : &*found;
}

QString NetworkScanner::currentServiceName() const
{
    const NetworkService *service = currentService();
    return service == nullptr ? QString() : service->name;
}

QList<ProxyServer> &NetworkScanner::serviceProxy()
{
    m_proxies.clear();
    if (const NetworkService *service = currentService()) {
        for (const Kind &kind : kinds) {
            if (const auto proxy = enabledProxy(kind, service->name))
                m_proxies.append(*proxy);
        }
    }
    return m_proxies;
}

void NetworkScanner::disableProxy(qint64 index) const
{
    if (index >= 0 && index < m_proxies.size())
        switchProxy(m_proxies[index], currentServiceName(), QLatin1String("off"));
}

void NetworkScanner::openProxy(qint64 index) const
{
    if (index >= 0 && index < m_proxies.size())
        switchProxy(m_proxies[index], currentServiceName(), QLatin1String("on"));
}

void NetworkScanner::disableAllProxy() const
{
    if (m_proxies.isEmpty())
        return;
    const QString service = currentServiceName();
    for (const ProxyServer &proxy : m_proxies)
        switchProxy(proxy, service, QLatin1String("off"));
}

void NetworkScanner::closeProxy(const QObject &sender) const
{
    if (sender.property("checked").toBool())
        openProxy(getIndex(sender));
    else
        disableProxy(getIndex(sender));
}

} // namespace velq
