#include "common/Reachability.h"

#include "common/AssertionFailure.h"
#include "common/NotificationCenter.h"

namespace velq
{

namespace
{

constexpr const char *sourceFile = "Reachability";
constexpr const char *callbackSignature =
    "void ReachabilityCallback(SCNetworkReachabilityRef, SCNetworkReachabilityFlags, void *)";

sockaddr_in ipv4Address(in_addr_t address)
{
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_addr.s_addr = htonl(address);
    return result;
}

std::unique_ptr<Reachability> monitorOf(std::unique_ptr<SCNetworkReachability> target,
                                        bool localWiFi = false)
{
    return target ? std::make_unique<Reachability>(std::move(target), localWiFi) : nullptr;
}

} // namespace

void PrintReachabilityFlags(SCNetworkReachabilityFlags, const char *)
{
}

void ReachabilityCallback(SCNetworkReachabilityRef, SCNetworkReachabilityFlags, void *info)
{
    requireInFunction(info != nullptr, callbackSignature, sourceFile,
                      "info was NULL in ReachabilityCallback");
    auto *monitor = qobject_cast<Reachability *>(static_cast<QObject *>(info));
    requireInFunction(monitor != nullptr, callbackSignature, sourceFile,
                      "info was wrong class in ReachabilityCallback");
    NotificationCenter::defaultCenter().post(kNetworkReachabilityChangedNotification, monitor);
}

std::unique_ptr<Reachability> Reachability::reachabilityWithHostName(const QString &hostName)
{
    return monitorOf(SCNetworkReachability::createWithName(hostName));
}

std::unique_ptr<Reachability> Reachability::reachabilityWithAddress(const sockaddr_in *hostAddress)
{
    return monitorOf(SCNetworkReachability::createWithAddress(hostAddress));
}

std::unique_ptr<Reachability> Reachability::reachabilityForInternetConnection()
{
    const sockaddr_in zero = ipv4Address(INADDR_ANY);
    return reachabilityWithAddress(&zero);
}

std::unique_ptr<Reachability> Reachability::reachabilityForLocalWiFi()
{
    const sockaddr_in localLink = ipv4Address(localLinkNetwork);
    return monitorOf(SCNetworkReachability::createWithAddress(&localLink), true);
}

Reachability::Reachability(std::unique_ptr<SCNetworkReachability> target, bool localWiFi)
    : reachabilityRef(std::move(target))
    , localWiFiRef(localWiFi)
{
}

Reachability::~Reachability()
{
    stopNotifer();
}

bool Reachability::startNotifer()
{
    return reachabilityRef != nullptr
        && reachabilityRef->setCallback(ReachabilityCallback, static_cast<QObject *>(this))
        && reachabilityRef->scheduleWithRunLoop();
}

void Reachability::stopNotifer()
{
    if (reachabilityRef != nullptr)
        reachabilityRef->unscheduleFromRunLoop();
}

NetworkStatus Reachability::currentReachabilityStatus() const
{
    requireInFunction(reachabilityRef != nullptr, Q_FUNC_INFO, sourceFile,
                      "currentNetworkStatus called with NULL reachabilityRef");
    const auto flags = reachabilityRef->getFlags();
    if (!flags)
        return NetworkNotReachable;
    return localWiFiRef ? localWiFiStatusForFlags(*flags) : networkStatusForFlags(*flags);
}

bool Reachability::connectionRequired() const
{
    requireInFunction(reachabilityRef != nullptr, Q_FUNC_INFO, sourceFile,
                      "connectionRequired called with NULL reachabilityRef");
    const auto flags = reachabilityRef->getFlags();
    return (flags.value_or(0) & kSCNetworkReachabilityFlagsConnectionRequired) != 0;
}

NetworkStatus Reachability::networkStatusForFlags(SCNetworkReachabilityFlags flags)
{
    PrintReachabilityFlags(flags, "networkStatusForFlags");
    if ((flags & kSCNetworkReachabilityFlagsReachable) == 0)
        return NetworkNotReachable;

    auto status = NetworkNotReachable;
    if ((flags & kSCNetworkReachabilityFlagsConnectionRequired) == 0)
        status = NetworkReachable;
    const bool automatic = (flags
                            & (kSCNetworkReachabilityFlagsConnectionOnDemand
                               | kSCNetworkReachabilityFlagsConnectionOnTraffic))
        != 0;
    if (automatic && (flags & kSCNetworkReachabilityFlagsInterventionRequired) == 0)
        status = NetworkReachable;
    return status;
}

NetworkStatus Reachability::localWiFiStatusForFlags(SCNetworkReachabilityFlags flags)
{
    PrintReachabilityFlags(flags, "localWiFiStatusForFlags");
    const auto needed = kSCNetworkReachabilityFlagsReachable | kSCNetworkReachabilityFlagsIsDirect;
    return (flags & needed) == needed ? NetworkReachable : NetworkNotReachable;
}

} // namespace velq
