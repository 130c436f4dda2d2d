#pragma once

#include "nettools/networksetup/ServiceText.h"

#include <cstdint>
#include <map>
#include <string>

namespace velq::nettools
{

enum class ProxyKind { Web, SecureWeb, Gopher, Streaming, Socks, Ftp };

/// Addresses of proxies, each as its desktop writes it; none of them is empty.
using ProxyAddresses = std::map<ProxyKind, std::string>;

/// What a desktop's settings say of its proxies.
struct ProxyState {
    /// Automatic: a script, the environment or the network decides, and the addresses do not count.
    enum class Mode { None, Manual, Automatic };

    Mode mode = Mode::None;
    ProxyAddresses addresses;
    bool webAuthenticates = false; ///< by credentials that lie apart from the web proxy's address

    bool operator==(const ProxyState &) const = default;
};

/// The settings of one desktop. One thread.
class DesktopProxies
{
public:
    DesktopProxies() = default;
    DesktopProxies(const DesktopProxies &) = delete;
    DesktopProxies &operator=(const DesktopProxies &) = delete;
    virtual ~DesktopProxies() = default;

    /// Names the file of the addresses that are kept for this desktop.
    virtual std::string name() const = 0;
    /// Whether it has a setting for such a proxy.
    virtual bool has(ProxyKind kind) const = 0;
    /// `server` stands without the brackets of an IPv6 address.
    virtual std::string addressFor(ProxyKind kind, const std::string &server,
                                   uint16_t port) const = 0;
    /// Throws Refusal when the settings cannot be read.
    virtual ProxyState read() = 0;
    /// Makes `after` of what read() has returned as `before`, changing only what differs, and tells
    /// running programs. At no moment is a proxy in use that is in use in neither of them. Throws
    /// Refusal.
    virtual void write(const ProxyState &before, const ProxyState &after) = 0;
};

} // namespace velq::nettools
