#pragma once

#include "nettools/networksetup/DesktopProxies.h"

#include <string_view>

namespace velq::nettools
{

/// The server and port in an address, and whether there are credentials in it. Understood are
/// "host:port", "host port", a lone host, and "[address]:port", each also behind "scheme://" and
/// "user:password@". Without a port it is the usual one of its kind; one that is no port is 0.
Proxy proxyAt(ProxyKind kind, std::string_view address);

} // namespace velq::nettools
