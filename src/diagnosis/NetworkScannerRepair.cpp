#include "common/NSAlert_Addition.h"
#include "common/Text.h"
#include "diagnosis/NetworkScanner.h"
#include "platform/UserDefaults.h"
#include "shell/CommandLine.h"

#include <array>
#include <thread>

namespace velq
{

namespace
{

using namespace std::chrono_literals;

// Public resolvers that have answered for many years. All of them are set; the system's resolver
// takes the first that answers.
constexpr std::array nameServers{
    QLatin1String("8.8.8.8"),        QLatin1String("8.8.4.4"),     QLatin1String("208.67.222.222"),
    QLatin1String("208.67.220.220"), QLatin1String("4.2.2.1"),     QLatin1String("4.2.2.2"),
    QLatin1String("4.2.2.3"),        QLatin1String("4.2.2.4"),     QLatin1String("4.2.2.5"),
    QLatin1String("4.2.2.6"),        QLatin1String("65.32.1.65"),  QLatin1String("65.32.1.70"),
    QLatin1String("68.94.156.1"),    QLatin1String("68.94.157.1"), QLatin1String("208.180.42.100"),
    QLatin1String("66.76.175.100"),
};

} // namespace

void NetworkScanner::startFix()
{
    struct Step {
        Problem problem;
        void (NetworkScanner::*mend)();
    };
    const std::array steps{Step{LinkProblem, &NetworkScanner::enableServices},
                           Step{AddressProblem, &NetworkScanner::renewAddress},
                           Step{NameServerProblem, &NetworkScanner::replaceNameServers},
                           Step{ProxyProblem, &NetworkScanner::askAboutProxies}};
    const qint64 found = errorStatus();
    for (const Step &step : steps) {
        if (stopFixFlag())
            return;
        if ((found & step.problem) != 0)
            (this->*step.mend)();
    }
    sleepFor(8s);
    if (net_connect)
        return;
    scan();
    if ((errorStatus() & AddressProblem) != 0)
        alertAboutRouter();
}

void NetworkScanner::sleepFor(std::chrono::seconds duration) const
{
    std::this_thread::sleep_for(duration);
}

void NetworkScanner::enableServices()
{
    (void)outputAsRoot(QStringLiteral("networksetup -setnetworkserviceenabled Ethernet on"));
    (void)outputAsRoot(QStringLiteral("networksetup -setnetworkserviceenabled Wi-Fi on"));
}

// Also when there is no current device, unlike with the name servers.
void NetworkScanner::renewAddress()
{
    const QString service = networkServiceForInterface(currentNetworkInterface());
    (void)outputAsRoot(QStringLiteral("networksetup -setdhcp %1").arg(shown(service)));
}

void NetworkScanner::replaceNameServers()
{
    const QString device = currentNetworkInterface();
    if (device.isEmpty())
        return;
    QString command = QStringLiteral("networksetup -setdnsservers %1")
                          .arg(shown(networkServiceForInterface(device)));
    for (const QLatin1String server : nameServers)
        command += u' ' + server;
    (void)outputAsRoot(command);
}

void NetworkScanner::askAboutProxies()
{
    const auto answer = answerTo(
        {.message = QStringLiteral("You need to close\u00a0proxy first, if you want to repair this "
                                   "problem."),
         .description = QStringLiteral("You can turn on proxy server again when you need."),
         .firstButton = QStringLiteral("Close proxy to finish the repair"),
         .otherButton = QStringLiteral("Ignore proxy settings")});
    if (answer == NSAlert_Addition::cancelTag)
        disableAllProxy();
    else if (answer.has_value())
        ignoreProxies();
}

void NetworkScanner::ignoreProxies() const
{
    const std::shared_ptr<NetData> item = array().value(3);
    if (item == nullptr)
        return;
    UserDefaults::standardUserDefaults().setBool(true, item->ignoreKey());
    setResult(3,
              {.error = false,
               .name = QStringLiteral("代理服务器正常."),
               .des = {},
               .subErrorView = nullptr});
    item->setHasIgnore(true);
}

} // namespace velq
