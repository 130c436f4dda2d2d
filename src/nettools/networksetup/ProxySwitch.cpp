#include "nettools/networksetup/ProxySwitch.h"

#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/ProxyAddress.h"

#include <algorithm>

namespace velq::nettools
{

using Mode = ProxyState::Mode;

std::string ProxySwitch::addressOf(ProxyKind kind) const
{
    for (const ProxyAddresses *addresses : {&desktop.addresses, &kept}) {
        if (const auto found = addresses->find(kind); found != addresses->end())
            return found->second;
    }
    return {};
}

Proxy ProxySwitch::proxy(ProxyKind kind) const
{
    const std::string address = addressOf(kind);
    if (address.empty())
        return {};
    Proxy proxy = proxyAt(kind, address);
    proxy.enabled = desktop.mode == Mode::Manual && desktop.addresses.contains(kind)
        && !proxy.server.empty() && proxy.port != 0;
    if (kind == ProxyKind::Web && desktop.webAuthenticates)
        proxy.authenticated = true;
    return proxy;
}

void ProxySwitch::set(ProxyKind kind, const std::string &address)
{
    if (desktop.mode == Mode::Automatic)
        throw Refusal("the desktop finds its proxies by itself; set it to manual ones first");
    // Addresses that the desktop has at hand but does not use would come into use with this one.
    if (desktop.mode == Mode::None) {
        while (!desktop.addresses.empty())
            keep(desktop.addresses.begin()->first);
    }
    desktop.addresses[kind] = address;
    desktop.mode = Mode::Manual;
    kept.erase(kind);
}

void ProxySwitch::switchOn(ProxyKind kind)
{
    const std::string address = addressOf(kind);
    const Proxy known = address.empty() ? Proxy() : proxyAt(kind, address);
    if (desktop.mode != Mode::Automatic && (known.server.empty() || known.port == 0))
        throw Refusal("this proxy has no address yet; set one, and it is switched on");
    set(kind, address);
}

void ProxySwitch::switchOff(ProxyKind kind)
{
    if (desktop.mode != Mode::Manual || !desktop.addresses.contains(kind))
        return;
    keep(kind);
    const bool anyIsOn = std::ranges::any_of(
        desktop.addresses, [this](const auto &entry) { return proxy(entry.first).enabled; });
    if (!anyIsOn)
        desktop.mode = Mode::None;
}

void ProxySwitch::keep(ProxyKind kind)
{
    const auto found = desktop.addresses.find(kind);
    kept[kind] = found->second;
    desktop.addresses.erase(found);
}

} // namespace velq::nettools
