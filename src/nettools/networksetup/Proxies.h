#pragma once

#include "nettools/networksetup/DesktopProxies.h"

/// The proxies that the programs of a person's desktop use. They are one person's and count for all
/// of the network services.
///
/// Called by root on behalf of a person (VELQ_UID, SUDO_UID or PKEXEC_UID in the environment), the
/// process becomes that person for good. What a desktop has no setting for reads as switched off,
/// and as no desktop does, too; changing it throws Refusal.
namespace velq::nettools::proxies
{

Proxy read(ProxyKind kind);
/// Switches it on as well.
void set(ProxyKind kind, const std::string &server, uint16_t port);
/// The address is kept while it is off.
void setState(ProxyKind kind, bool on);

} // namespace velq::nettools::proxies
