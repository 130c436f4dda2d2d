#pragma once

#include "platform/SCNetworkReachability.h"
#include "platform/linux/rtnetlink/Routes.h"

namespace velq
{

/// The reachability flags of the kernel's routes and links as they stand: read anew at each call, a
/// few tens of microseconds, no packet sent. Nothing when the kernel does not answer. Any thread.

/// Reachable while a default route leads out, IPv4, or IPv6 where that is all there is.
std::optional<SCNetworkReachabilityFlags> internetFlags();

/// Reachable while the address has a route over a link that carries; direct when no gateway stands
/// between.
std::optional<SCNetworkReachabilityFlags> addressFlags(const rtnetlink::Address &address);

/// Reachable and direct while a link that carries, neither loopback nor tunnel, has a network of
/// its own.
std::optional<SCNetworkReachabilityFlags> localLinkFlags();

} // namespace velq
