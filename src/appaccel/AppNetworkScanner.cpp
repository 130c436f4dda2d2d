#include "appaccel/AppNetworkScanner.h"

#include "common/HostAcceleration.h"
#include "platform/PropertyValue.h"
#include "scanner/AppNetworkAppdelegate.h"
#include "shell/CommandLine.h"

#include <array>
#include <thread>

namespace velq
{

namespace
{

using namespace std::chrono_literals;

enum Item { Safari, ICloud, ITunes, AppStore };
constexpr std::array hostItems{ICloud, ITunes, AppStore};

ItemScanner::Array items()
{
    return {
        NetData::make({.title = QStringLiteral("Safari"),
                       .des = QStringLiteral(
                           "Adjust\u00a0safari standard delay settings to load pages faster."),
                       .image = QStringLiteral("icon_safari"),
                       .ignoreKey = QStringLiteral("AppOptimize1")}),
        NetData::make({.title = QStringLiteral("iCloud"),
                       .des = QStringLiteral(
                           "Speed up the address resolution of iCloud server by accelerating "
                           "host. Turn on iCloud LAN speedup to sync faster between the devices "
                           "in LAN."),
                       .image = QStringLiteral("icon_icloud"),
                       .ignoreKey = QStringLiteral("AppOptimize2")}),
        NetData::make(
            {.title = QStringLiteral("iTunes"),
             .des = QStringLiteral("Adjust iTunes standard delay settings\u00a0to make its service "
                                   "response faster."),
             .image = QStringLiteral("icon_itunes"),
             .ignoreKey = QStringLiteral("AppOptimize3")}),
        NetData::make({.title = QStringLiteral("AppStore"),
                       .des = QStringLiteral(
                           "Adjust App standard delay settings\u00a0to make its service response "
                           "faster."),
                       .image = QStringLiteral("icon_app_store"),
                       .ignoreKey = QStringLiteral("AppOptimize4")}),
    };
}

NetStatus accelerated(bool on)
{
    return {.error = !on,
            .name = on ? QStringLiteral("Host acceleration: On")
                       : QStringLiteral("Host acceleration: Off"),
            .des = {},
            .subErrorView = nullptr};
}

} // namespace

AppNetworkScanner &AppNetworkScanner::shareScanner()
{
    // Never destroyed: somebody may still scan when the program ends.
    static auto *const scanner = new AppNetworkScanner;
    return *scanner;
}

AppNetworkScanner::AppNetworkScanner()
    : ItemScanner(items())
{
}

void AppNetworkScanner::scan()
{
    ItemScanner::scan();
    forgetLastScan();
    if (stopScanFlag())
        return;
    checkSafari();
    if (stopScanFlag())
        return;
    checkHosts();
}

void AppNetworkScanner::checkSafari()
{
    const bool off = needOptSafari() && !isIgnored(Safari);
    setResult(Safari, accelerated(!off));
    if (off)
        report(SafariProblem);
}

// That hosts are not accelerated is told whoever ignores it: the item shows the choice, the bit the
// state.
void AppNetworkScanner::checkHosts()
{
    const bool off = needModifyHosts();
    for (const Item item : hostItems)
        setResult(item, accelerated(!off || isIgnored(item)));
    if (off)
        report(HostsProblem);
}

void AppNetworkScanner::report(Problem problem)
{
    setErrorStatus(errorStatus() | problem);
    if (m_delegate != nullptr)
        m_delegate->appScannerStatus(problem);
}

bool AppNetworkScanner::needOptSafari() const
{
    constexpr double acceleratedDelay = 0.25;
    QString output =
        outputOf(QStringLiteral("defaults read com.apple.Safari WebKitInitialTimedLayoutDelay"));
    const auto delay = static_cast<float>(realOfValue(output.remove(u'\n')));
    return static_cast<double>(delay) != acceleratedDelay;
}

bool AppNetworkScanner::needModifyHosts() const
{
    return !outputAsRoot(QStringLiteral("cat /etc/hosts|grep ") + hostacceleration::domain)
                .contains(hostacceleration::domain);
}

void AppNetworkScanner::modifyHosts() const
{
    (void)outputAsRoot(QStringLiteral("chmod 777 /etc/hosts"));
    (void)outputAsRoot(QStringLiteral("sudo echo '") + hostacceleration::lines
                       + QStringLiteral("'>>/etc/hosts"));
}

void AppNetworkScanner::speedup()
{
    if (stopFixFlag())
        return;
    if ((errorStatus() & SafariProblem) != 0) {
        (void)outputOf(
            QStringLiteral("defaults write com.apple.Safari WebKitInitialTimedLayoutDelay 0.25"));
        setResult(Safari, accelerated(true));
    }
    if (stopFixFlag())
        return;
    if ((errorStatus() & HostsProblem) != 0) {
        modifyHosts();
        for (const Item item : hostItems)
            setResult(item, accelerated(true));
    }
    sleepFor(5s);
}

void AppNetworkScanner::sleepFor(std::chrono::seconds duration) const
{
    std::this_thread::sleep_for(duration);
}

} // namespace velq
