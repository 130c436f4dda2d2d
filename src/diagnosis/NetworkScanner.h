#pragma once

#include "scanner/ItemScanner.h"
#include "scanner/NetworkService.h"
#include "scanner/ProxyServer.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <atomic>
#include <chrono>
#include <memory>
#include <optional>

class QObject;
class QWidget;

namespace velq
{

class DiagnosisHost;
class NetworkErrorDelegate;

/// The last answer of NetworkScanner::hasConnectivity(); false before the first.
extern std::atomic<bool> net_connect;

/// The diagnosis of the connection: which link of the chain is broken (cable, address, name server,
/// proxy, router), and its repair.
///
/// What it knows comes from the text of command-line tools, cut by fixed separators; a tool that is
/// missing or fails gives the negative answer: the empty text, none (null), false, no record. Names
/// go into the command lines as they are, an absent one as "(null)". Every operation blocks its
/// caller while the tools run. One thread at a time uses an instance, but for the two stops.
class NetworkScanner : public ItemScanner
{
public:
    /// The checks by the bits of their problems, in the order in which they are made; the router is
    /// what remains when all of them passed.
    enum Problem : qint64 {
        LinkProblem = 0x1,
        AddressProblem = 0x10,
        NameServerProblem = 0x100,
        ProxyProblem = 0x1000,
        RouterProblem = 0x10000
    };

    /// The process's one; made at the first use, never destroyed.
    static NetworkScanner &shareScanner();

    /// Diagnoses until the first check that fails, which the delegate is told. An internet that
    /// answers makes all items normal without a check. Behind a failed check, and where it was
    /// stopped, items keep what an earlier scan has found.
    ///
    /// Where nothing but the router is left to blame, that is an alert instead of a call of the
    /// delegate, and the scan returns when it has been answered.
    void scan() override;
    /// startFix().
    void speedup() override;

    /// Repairs what errorStatus() tells of, waits eight seconds for the network, and scans again
    /// unless the internet had answered the last probe. Asks the person what to do about proxies,
    /// and says so when the address is still wrong in the end.
    void startFix();

    /// The device of a service. Empty when there is no such service; several that match give their
    /// devices in one piece.
    static QString networkInterfaceForService(const QString &service);
    /// The service on a device among the shared scanner's known services; null when none is. They
    /// are not read anew.
    static QString networkServiceForInterface(const QString &interface);
    /// Whether the link of the device carries.
    static bool networkServiceIsActive(const QString &interface);
    /// Whether a public host answers an echo request. Remembered in net_connect.
    static bool hasConnectivity();
    /// When a public host has answered, the device that the traffic takes; when not, that of the
    /// first of the shared scanner's known services whose link carries. Empty when there is none,
    /// never null.
    static QString currentNetworkInterface();

    /// The services' names; a disabled one has an asterisk in front.
    QStringList networkServices() const;
    /// Appends the computer's services to the known ones, which whoever calls has emptied.
    void searchNetworkSerices();
    /// The last IPv4 address listed for the device; null when it has none.
    QString getIPAddressForService(const QString &interface) const;
    bool isEnabledForService(const QString &service) const;

    /// Whether the current device's address lies in another network than the default gateway; also
    /// when one of them is missing. A mask of 255.255.255.255, or one that is no single mask, sets
    /// no network apart: with it every address is right.
    bool checkIPIsWrong() const;
    /// Whether one of the known services has a router configured.
    bool hasRouterIP() const;
    /// The default gateway, or whatever text with numbers stands in its place; null when none does.
    QString getRouteAddress() const;
    /// That of the default route's device, in hexadecimal digits; several in one piece.
    QString getNetmask() const;
    /// Whether no name server can be reached. Any other failure is none of the servers' presence.
    bool isDNSServiceError() const;

    /// Reads proxies() anew: those switched on for the service that carries the traffic.
    QList<ProxyServer> &serviceProxy();
    /// Switch proxies of the service that carries the traffic off and on, as root. The list and its
    /// records stay as they were read, so an index means the same proxy all the time; one outside
    /// the list does nothing.
    void disableProxy(qint64 index) const;
    void openProxy(qint64 index) const;
    void disableAllProxy() const;
    /// The action of a proxy's checkbox: switches the proxy of its index (getIndex()) on when its
    /// property "checked" is true, else off.
    void closeProxy(const QObject &sender) const;

    /// A row that names the service without an address. Null without a host, or windows. Any
    /// thread; so is the view's end, which comes on the main thread in either case.
    std::shared_ptr<QWidget> createErrorViewForIPError() const;
    /// A checkbox for each of proxies(); as above.
    std::shared_ptr<QWidget> createProxyControlView();

    /// Who shows views and alerts; not owned, none at first. Without one there are no views, and
    /// an alert is answered by its first button. With one, the main thread must run its event loop
    /// while another thread scans or repairs.
    void setHost(DiagnosisHost *host) { m_host = host; }

    /// Not owned; none at first.
    NetworkErrorDelegate *delegate() const { return m_delegate; }
    void setDelegate(NetworkErrorDelegate *delegate) { m_delegate = delegate; }
    /// The known services.
    QList<NetworkService> &services() { return m_services; }
    void setServices(const QList<NetworkService> &services) { m_services = services; }
    /// As serviceProxy() has found them.
    QList<ProxyServer> &proxies() { return m_proxies; }
    void setProxies(const QList<ProxyServer> &proxies) { m_proxies = proxies; }

protected:
    NetworkScanner();

    /// How a repair waits for the network.
    virtual void sleepFor(std::chrono::seconds duration) const;

private:
    struct Alert {
        QString message;
        QString description;
        QString firstButton;
        QString otherButton;
    };

    void diagnose();
    bool checkLink();
    bool checkAddress();
    bool checkNameServers();
    bool checkProxies();
    void blameRouter();
    void report(Problem problem);

    void enableServices();
    void renewAddress();
    void replaceNameServers();
    void askAboutProxies();
    void ignoreProxies() const;

    const NetworkService *currentService() const;
    QString currentServiceName() const;

    std::optional<qint64> answerTo(const Alert &alert) const;
    void alertAboutRouter();

    QList<NetworkService> m_services;
    QList<ProxyServer> m_proxies;
    DiagnosisHost *m_host = nullptr;
    NetworkErrorDelegate *m_delegate = nullptr;
};

} // namespace velq
