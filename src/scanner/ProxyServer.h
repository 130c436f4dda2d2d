#pragma once

#include <QString>

namespace velq
{

/// One proxy setting of a service.
struct ProxyServer {
    QString proxyType;
    QString serverIP;
    QString port; ///< as text
    bool enabled = false;
    bool authenticated = false; ///< it wants a name and a password

    bool operator==(const ProxyServer &) const = default;
};

} // namespace velq
