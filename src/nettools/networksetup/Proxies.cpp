#include "nettools/networksetup/Proxies.h"

#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/GnomeProxies.h"
#include "nettools/networksetup/KdeProxies.h"
#include "nettools/networksetup/KeptAddresses.h"
#include "nettools/networksetup/Person.h"
#include "nettools/networksetup/ProxySwitch.h"

#include <cstdlib>
#include <functional>
#include <memory>
#include <string_view>

namespace velq::nettools::proxies
{

namespace
{

bool desktopIsKde()
{
    const char *names = std::getenv("XDG_CURRENT_DESKTOP");
    const std::string list = std::string(":") + (names != nullptr ? names : "") + ":";
    return list.find(":KDE:") != std::string::npos;
}

// Null when there is none.
std::unique_ptr<DesktopProxies> openDesktop()
{
    becomePerson();
    if (desktopIsKde())
        return std::make_unique<KdeProxies>();
    if (auto gnome = GnomeProxies::find())
        return gnome;
    return KdeProxies::find();
}

std::unique_ptr<DesktopProxies> desktopFor(ProxyKind kind)
{
    auto desktop = openDesktop();
    if (desktop == nullptr)
        throw Refusal("no desktop keeps proxies here");
    if (!desktop->has(kind))
        throw Refusal("the desktop has no setting for such a proxy");
    return desktop;
}

// What is to be kept is on disk before the desktop forgets it, and goes once the desktop has it
// back. What was read before the lock was had may be old.
void change(ProxyKind kind, const std::function<void(ProxySwitch &, const DesktopProxies &)> &how)
{
    KeptAddresses file(desktopFor(kind)->name());
    file.lock();
    const auto desktop = desktopFor(kind);
    const ProxySwitch before{desktop->read(), file.read()};
    ProxySwitch after = before;
    how(after, *desktop);
    ProxyAddresses both = after.kept;
    both.insert(before.kept.begin(), before.kept.end());
    file.write(both);
    if (after.desktop != before.desktop)
        desktop->write(before.desktop, after.desktop);
    file.write(after.kept);
}

std::string withoutBrackets(const std::string &server)
{
    const bool has = server.starts_with('[') && server.ends_with(']');
    return has ? server.substr(1, server.size() - 2) : server;
}

} // namespace

Proxy read(ProxyKind kind)
{
    // No desktop has settings for these, and to look for one takes a while.
    if (kind == ProxyKind::Gopher || kind == ProxyKind::Streaming)
        return {};
    const auto desktop = openDesktop();
    if (desktop == nullptr || !desktop->has(kind))
        return {};
    return ProxySwitch{desktop->read(), KeptAddresses(desktop->name()).read()}.proxy(kind);
}

void set(ProxyKind kind, const std::string &server, uint16_t port)
{
    change(kind, [&](ProxySwitch &proxies, const DesktopProxies &desktop) {
        proxies.set(kind, desktop.addressFor(kind, withoutBrackets(server), port));
    });
}

void setState(ProxyKind kind, bool on)
{
    change(kind, [&](ProxySwitch &proxies, const DesktopProxies &) {
        if (on)
            proxies.switchOn(kind);
        else
            proxies.switchOff(kind);
    });
}

} // namespace velq::nettools::proxies
