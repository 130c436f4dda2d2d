#include "nettools/networksetup/GnomeProxies.h"

#include "nettools/lib/SystemProgram.h"
#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/SettingsText.h"
#include "shell/process/ChildProcess.h"

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace velq::nettools
{

namespace
{

using Mode = ProxyState::Mode;

constexpr const char *settings = "org.gnome.system.proxy";

constexpr std::array schemas = std::to_array<std::pair<ProxyKind, std::string_view>>({
    {ProxyKind::Web, "org.gnome.system.proxy.http"},
    {ProxyKind::SecureWeb, "org.gnome.system.proxy.https"},
    {ProxyKind::Socks, "org.gnome.system.proxy.socks"},
    {ProxyKind::Ftp, "org.gnome.system.proxy.ftp"},
});

struct Ran {
    std::string output;
    bool succeeded = false;
};

Ran run(const std::string &program, const std::vector<std::string> &arguments)
{
    process::Surroundings quiet;
    quiet.mutesError = true;
    try {
        process::ChildProcess child(program, arguments, quiet);
        std::string output = child.readToEnd();
        child.waitUntilExit();
        return {std::move(output), child.exitStatus() == 0};
    } catch (const process::LaunchError &error) {
        throw Refusal(error.what());
    }
}

std::string addressAt(const ProxyAddresses &addresses, ProxyKind kind)
{
    const auto found = addresses.find(kind);
    return found != addresses.end() ? found->second : "";
}

Mode modeNamed(const std::string &name)
{
    if (name == "manual")
        return Mode::Manual;
    return name == "none" ? Mode::None : Mode::Automatic;
}

} // namespace

GnomeProxies::GnomeProxies(std::string program, std::string listing)
    : m_program(std::move(program))
    , m_listing(std::move(listing))
{
}

std::unique_ptr<GnomeProxies> GnomeProxies::find()
{
    std::string program = systemProgram("gsettings");
    if (program.empty())
        return nullptr;
    Ran ran = run(program, {"list-recursively", settings});
    if (!ran.succeeded)
        return nullptr;
    return std::unique_ptr<GnomeProxies>(
        new GnomeProxies(std::move(program), std::move(ran.output)));
}

bool GnomeProxies::has(ProxyKind kind) const
{
    return std::ranges::find(schemas, kind, &std::pair<ProxyKind, std::string_view>::first)
        != schemas.end();
}

std::string GnomeProxies::addressFor(ProxyKind, const std::string &server, uint16_t port) const
{
    return server + " " + std::to_string(port);
}

std::string GnomeProxies::listing() const
{
    Ran ran = run(m_program, {"list-recursively", settings});
    if (!ran.succeeded)
        throw Refusal("the desktop's settings cannot be read");
    return std::move(ran.output);
}

ProxyState GnomeProxies::read()
{
    const auto listed = std::exchange(m_listing, std::nullopt);
    const auto values = settingsIn(listed.has_value() ? *listed : listing());
    const auto value = [&](std::string_view schema, const char *key) {
        const auto found = values.find(std::string(schema).append(" ").append(key));
        return found != values.end() ? found->second : "";
    };
    ProxyState state;
    state.mode = modeNamed(unquotedSetting(value(settings, "mode")));
    for (const auto &[kind, schema] : schemas) {
        const std::string host = unquotedSetting(value(schema, "host"));
        if (!host.empty())
            state.addresses[kind] = host + " " + value(schema, "port");
    }
    state.webAuthenticates = value(schemas.front().second, "use-authentication") == "true";
    return state;
}

void GnomeProxies::set(std::string_view schema, const char *key, const std::string &value) const
{
    if (!run(m_program, {"set", std::string(schema), key, value}).succeeded)
        throw Refusal("the desktop does not let its proxies be changed");
}

void GnomeProxies::setMode(const ProxyState &before, const ProxyState &after) const
{
    if (before.mode != after.mode)
        set(settings, "mode", after.mode == Mode::Manual ? "'manual'" : "'none'");
}

// In whatever form the host was entered, it is given back in that.
void GnomeProxies::setAddress(std::string_view schema, const std::string &address) const
{
    const size_t blank = address.rfind(' ');
    // Without a host, a port is nobody's.
    if (blank != std::string::npos)
        set(schema, "port", address.substr(blank + 1));
    set(schema, "host", quotedSetting(address.substr(0, blank)));
}

// Addresses change while they are not in use where that can be had: the mode goes off first and
// comes on last.
void GnomeProxies::apply(const ProxyState &before, const ProxyState &after)
{
    if (after.mode == Mode::None)
        setMode(before, after);
    for (const auto &[kind, schema] : schemas) {
        const std::string address = addressAt(after.addresses, kind);
        if (address != addressAt(before.addresses, kind))
            setAddress(schema, address);
    }
    if (after.mode == Mode::Manual)
        setMode(before, after);
    // What keeps the settings may be out of reach, and gsettings(1) succeeds all the same.
    if (read() != after)
        throw Refusal("the desktop's settings have not taken the change");
}

void GnomeProxies::write(const ProxyState &before, const ProxyState &after)
{
    try {
        apply(before, after);
    } catch (const Refusal &) {
        takeBack(before);
        throw;
    }
}

// Of settings some of which an administrator has locked.
void GnomeProxies::takeBack(const ProxyState &before)
{
    try {
        apply(read(), before);
    } catch (const Refusal &refusal) {
        throw Refusal(std::string(refusal.what()) + ", and have been changed in part");
    }
}

} // namespace velq::nettools
