#pragma once

#include "nettools/networksetup/DesktopProxies.h"

namespace velq::nettools
{

/// A desktop switches its proxies on and off together. That one of them can be switched by itself
/// takes a place where the addresses of those are kept that are off while others are on.
struct ProxySwitch {
    ProxyState desktop;
    ProxyAddresses kept; ///< what the desktop says goes before it

    Proxy proxy(ProxyKind kind) const;
    /// Throws Refusal when the desktop's mode is automatic.
    void set(ProxyKind kind, const std::string &address);
    /// Throws Refusal when the desktop's mode is automatic, or no address is known.
    void switchOn(ProxyKind kind);
    /// Changes nothing about one that is off.
    void switchOff(ProxyKind kind);

private:
    std::string addressOf(ProxyKind kind) const;
    void keep(ProxyKind kind);
};

} // namespace velq::nettools
