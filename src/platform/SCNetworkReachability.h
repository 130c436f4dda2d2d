#pragma once

#include <QString>

#include <cstdint>
#include <functional>
#include <memory>
#include <netinet/in.h>
#include <optional>

namespace velq
{

class SCNetworkReachability;

/// What the system says of the way to a target, as bits.
using SCNetworkReachabilityFlags = uint32_t;
using SCNetworkReachabilityRef = SCNetworkReachability *;

constexpr SCNetworkReachabilityFlags kSCNetworkReachabilityFlagsReachable = 2;
constexpr SCNetworkReachabilityFlags kSCNetworkReachabilityFlagsConnectionRequired = 4;
constexpr SCNetworkReachabilityFlags kSCNetworkReachabilityFlagsConnectionOnTraffic = 8;
constexpr SCNetworkReachabilityFlags kSCNetworkReachabilityFlagsInterventionRequired = 16;
constexpr SCNetworkReachabilityFlags kSCNetworkReachabilityFlagsConnectionOnDemand = 32;
constexpr SCNetworkReachabilityFlags kSCNetworkReachabilityFlagsIsDirect = 0x20000;

/// The address that stands for the local link, in host order: 169.254.0.0.
constexpr in_addr_t localLinkNetwork = 0xa9fe0000;

/// Told of a change: the target, its flags now, and the pointer given with the function.
using SCNetworkReachabilityCallBack = void (*)(SCNetworkReachabilityRef, SCNetworkReachabilityFlags,
                                               void *info);

/// A target of the system's reachability service: an address or a host name. Asking sends no
/// packet, but for the look-up of a name.
///
/// What the flags mean for the special addresses: 0.0.0.0 stands for the internet in general and is
/// reachable while there is a usable default route, IPv4 or IPv6; 169.254.0.0 stands for the local
/// link and is reachable and direct while a link carries a network of its own.
///
/// Linux brings up no connection on demand, so of the flags above it only ever answers Reachable
/// and IsDirect.
class SCNetworkReachability
{
public:
    SCNetworkReachability() = default;
    SCNetworkReachability(const SCNetworkReachability &) = delete;
    SCNetworkReachability &operator=(const SCNetworkReachability &) = delete;
    virtual ~SCNetworkReachability() = default;

    /// Null for an empty name.
    static std::unique_ptr<SCNetworkReachability> createWithName(const QString &name);
    /// Null for a null address or one that is not AF_INET. The address is copied.
    static std::unique_ptr<SCNetworkReachability> createWithAddress(const sockaddr_in *address);

    /// The flags now; nothing when the system does not say. Any thread. Blocks while a name is
    /// resolved.
    virtual std::optional<SCNetworkReachabilityFlags> getFlags() = 0;

    /// Sets the function to be told of changes, null for none. `info` is handed through and not
    /// owned.
    virtual bool setCallback(SCNetworkReachabilityCallBack callback, void *info) = 0;

    /// From now on, each change of the flags calls the callback on the calling thread, while its
    /// event loop runs; events that come in a burst are looked at once. False when the thread has
    /// no event loop or the system refuses. A target that is destroyed is unscheduled.
    virtual bool scheduleWithRunLoop() = 0;
    /// Ends that. On the thread that scheduled; without effect when not scheduled.
    virtual bool unscheduleFromRunLoop() = 0;
};

} // namespace velq
