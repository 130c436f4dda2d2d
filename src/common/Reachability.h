#pragma once

#include "platform/SCNetworkReachability.h"

#include <QObject>

namespace velq
{

/// Whether a target can be reached. No third value is ever produced.
enum NetworkStatus : int {
    NetworkNotReachable = 0, ///< it cannot, or the system does not say
    NetworkReachable = 1,    ///< it can, by wire, Wi-Fi or any other way
};

/// Posted on the default NotificationCenter, with the Reachability as the object, when the way to
/// its target changes between startNotifer() and stopNotifer().
inline constexpr QLatin1String
    kNetworkReachabilityChangedNotification("kNetworkReachabilityChangedNotification");

/// A monitor of the way to one host or address.
///
/// Status questions may come from any thread and block while a host name is resolved. The
/// notification comes on the thread that called startNotifer(), through its event loop;
/// stopNotifer() and destruction belong on that thread.
class Reachability : public QObject
{
    Q_OBJECT

public:
    /// Null when the platform cannot make the target: for an empty name, or no IPv4 address.
    static std::unique_ptr<Reachability> reachabilityWithHostName(const QString &hostName);
    static std::unique_ptr<Reachability> reachabilityWithAddress(const sockaddr_in *hostAddress);
    /// Any route to the outside.
    static std::unique_ptr<Reachability> reachabilityForInternetConnection();
    /// The local link: reachable only when no gateway stands between.
    static std::unique_ptr<Reachability> reachabilityForLocalWiFi();

    /// Takes over `target`. Without one, questions end in an AssertionFailure.
    explicit Reachability(std::unique_ptr<SCNetworkReachability> target = nullptr,
                          bool localWiFi = false);
    ~Reachability() override;

    /// True when the platform took both the callback and the scheduling.
    bool startNotifer();
    /// Without effect when not started.
    void stopNotifer();

    /// Throws AssertionFailure without a target.
    NetworkStatus currentReachabilityStatus() const;
    /// True when the target needs a connection that is not up. Throws AssertionFailure without a
    /// target.
    bool connectionRequired() const;

    static NetworkStatus networkStatusForFlags(SCNetworkReachabilityFlags flags);
    static NetworkStatus localWiFiStatusForFlags(SCNetworkReachabilityFlags flags);

private:
    std::unique_ptr<SCNetworkReachability> reachabilityRef;
    bool localWiFiRef;
};

/// Where the platform's change events arrive: posts the notification. `info` must point to the
/// QObject that is the Reachability; anything else throws AssertionFailure.
void ReachabilityCallback(SCNetworkReachabilityRef target, SCNetworkReachabilityFlags flags,
                          void *info);

/// A hook for looking at flags while hunting a defect; does nothing.
void PrintReachabilityFlags(SCNetworkReachabilityFlags flags, const char *comment);

} // namespace velq
