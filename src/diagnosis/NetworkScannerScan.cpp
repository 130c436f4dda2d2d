#include "diagnosis/NetworkScanner.h"

#include "common/Text.h"
#include "scanner/NetworkErrorDelegate.h"

#include <algorithm>
#include <utility>

namespace velq
{

namespace
{

enum Item { LinkItem, AddressItem, NameServerItem, ProxyItem };

NetStatus normal(const QString &des)
{
    return {.error = false, .name = QStringLiteral("Normal"), .des = des, .subErrorView = nullptr};
}

NetStatus abnormal(const QString &des, const std::shared_ptr<QWidget> &view = nullptr)
{
    return {.error = true, .name = QStringLiteral("Abnormal"), .des = des, .subErrorView = view};
}

NetStatus linkIsNormal()
{
    return normal(QStringLiteral("Network card connected"));
}

NetStatus addressIsNormal()
{
    return normal(QStringLiteral("Obtained IP successfully"));
}

NetStatus nameServersAreNormal()
{
    return normal(QStringLiteral("The current DNS server parsed domains successfully."));
}

NetStatus proxiesAreNormal()
{
    return normal(QStringLiteral("No proxy issues since no HTTP proxy used."));
}

QString withoutAddress(const QString &service, const QString &address)
{
    return QStringLiteral("The devices below failed to obtain IP %1: %2")
        .arg(shown(service), shown(address));
}

} // namespace

void NetworkScanner::scan()
{
    Scanner::scan();
    forgetLastScan();
    m_services.clear();
    searchNetworkSerices();
    diagnose();
}

void NetworkScanner::diagnose()
{
    if (hasConnectivity()) {
        setResult(LinkItem, linkIsNormal());
        setResult(AddressItem, addressIsNormal());
        setResult(NameServerItem, nameServersAreNormal());
        setResult(ProxyItem, proxiesAreNormal());
        return;
    }
    for (const auto check : {&NetworkScanner::checkLink, &NetworkScanner::checkAddress,
                             &NetworkScanner::checkNameServers, &NetworkScanner::checkProxies}) {
        if (stopScanFlag() || !(this->*check)())
            return;
    }
    if (issueCount() == 0)
        blameRouter();
}

bool NetworkScanner::checkLink()
{
    const bool connected = std::ranges::any_of(
        m_services, [](const NetworkService &each) { return each.enabled && each.isActive; });
    if (connected) {
        setResult(LinkItem, linkIsNormal());
        return true;
    }
    setResult(LinkItem,
              abnormal(QStringLiteral("Either the cable for Ethernet is not plugged in or the "
                                      "device at the other end is not responding.")));
    report(LinkProblem);
    return false;
}

bool NetworkScanner::checkAddress()
{
    if (!checkIPIsWrong()) {
        setResult(AddressItem, addressIsNormal());
        return true;
    }
    const QString device = currentNetworkInterface();
    const QString text =
        withoutAddress(networkServiceForInterface(device), getIPAddressForService(device));
    setResult(AddressItem, abnormal(text, createErrorViewForIPError()));
    report(AddressProblem);
    return false;
}

bool NetworkScanner::checkNameServers()
{
    if (!isDNSServiceError()) {
        setResult(NameServerItem, nameServersAreNormal());
        return true;
    }
    setResult(NameServerItem,
              abnormal(QStringLiteral("The current DNS server failed to parse. Please switch to "
                                      "the correct DNS server.")));
    report(NameServerProblem);
    return false;
}

// Proxies are a problem to who has chosen to ignore them, and to nobody else: the sense of the test
// is meant.
bool NetworkScanner::checkProxies()
{
    if (serviceProxy().isEmpty() || !isIgnored(ProxyItem)) {
        setResult(ProxyItem, proxiesAreNormal());
        return true;
    }
    setResult(ProxyItem,
              abnormal(QStringLiteral("Please disable HTTP proxy."), createProxyControlView()));
    report(ProxyProblem);
    return false;
}

void NetworkScanner::blameRouter()
{
    if (const std::shared_ptr<NetData> item = array().value(AddressItem)) {
        item->setIssue(1);
        item->setErrorStatus({});
    }
    // It has a line like any other problem, which is not shown: the alert says it.
    const NetStatus unshown =
        abnormal(withoutAddress(QString(), QString()), createErrorViewForIPError());
    setErrorStatus(errorStatus() | RouterProblem);
    alertAboutRouter();
}

void NetworkScanner::report(Problem problem)
{
    setErrorStatus(errorStatus() | problem);
    if (m_delegate != nullptr)
        m_delegate->networkErrorStatus(problem);
}

} // namespace velq
