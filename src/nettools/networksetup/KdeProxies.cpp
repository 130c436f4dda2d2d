#include "nettools/networksetup/KdeProxies.h"

#include "nettools/lib/PersonFolders.h"
#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/KioConfiguration.h"
#include "nettools/networksetup/SessionBus.h"
#include "platform/linux/propertylist/FileLock.h"
#include "platform/linux/propertylist/ListFile.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <unistd.h>

namespace velq::nettools
{

namespace
{

using Mode = ProxyState::Mode;

constexpr const char *modeKey = "ProxyType";

struct Key {
    ProxyKind kind;
    std::string_view name;
    std::string_view scheme;
};
constexpr std::array keys = std::to_array<Key>({
    {ProxyKind::Web, "httpProxy", "http://"},
    {ProxyKind::SecureWeb, "httpsProxy", "http://"},
    {ProxyKind::Socks, "socksProxy", "socks://"},
    {ProxyKind::Ftp, "ftpProxy", "http://"},
});

void check(const std::error_code &error, const std::string &path)
{
    if (error)
        throw Refusal(path + ": " + error.message());
}

KioConfiguration configurationAt(const std::string &path)
{
    const propertylist::FileBytes file = propertylist::readFile(path);
    if (!file.isMissing())
        check(file.error, path);
    return KioConfiguration(file.bytes);
}

Mode modeFrom(const std::string &value)
{
    if (value == "1")
        return Mode::Manual;
    return value.empty() || value == "0" ? Mode::None : Mode::Automatic;
}

ProxyState stateIn(const KioConfiguration &configuration)
{
    ProxyState state;
    state.mode = modeFrom(configuration.value(modeKey));
    for (const Key &key : keys) {
        if (std::string value = configuration.value(key.name); !value.empty())
            state.addresses.emplace(key.kind, std::move(value));
    }
    return state;
}

} // namespace

KdeProxies::KdeProxies()
    : m_path(propertylist::linkTarget(baseFolder("XDG_CONFIG_HOME", ".config") + "/kioslaverc"))
{
}

std::unique_ptr<KdeProxies> KdeProxies::find()
{
    auto proxies = std::make_unique<KdeProxies>();
    return access(proxies->m_path.c_str(), F_OK) == 0 ? std::move(proxies) : nullptr;
}

bool KdeProxies::has(ProxyKind kind) const
{
    return std::ranges::find(keys, kind, &Key::kind) != keys.end();
}

std::string KdeProxies::addressFor(ProxyKind kind, const std::string &server, uint16_t port) const
{
    const bool isIPv6 = server.find(':') != std::string::npos;
    return std::string(std::ranges::find(keys, kind, &Key::kind)->scheme)
        .append(isIPv6 ? "[" + server + "]" : server)
        .append(" ")
        .append(std::to_string(port));
}

ProxyState KdeProxies::read()
{
    return stateIn(configurationAt(m_path));
}

void KdeProxies::write(const ProxyState &before, const ProxyState &after)
{
    check(propertylist::makeFolderOf(m_path), m_path);
    const propertylist::FileLock lock(m_path);
    check(lock.error(), m_path);
    KioConfiguration configuration = configurationAt(m_path);
    if (stateIn(configuration) != before)
        throw Refusal("somebody else is changing the desktop's proxies");
    if (after.mode != before.mode)
        configuration.set(modeKey, after.mode == Mode::Manual ? "1" : "0");
    for (const Key &key : keys) {
        const auto address = after.addresses.find(key.kind);
        const std::string value = address != after.addresses.end() ? address->second : "";
        if (value != configuration.value(key.name))
            configuration.set(key.name, value);
    }
    check(propertylist::replaceFile(m_path, configuration.text()), m_path);
    // An emission that nobody hears is as good as none.
    if (const SessionBus bus = openSessionBus(); bus != nullptr)
        (void)sd_bus_emit_signal(bus.get(), "/KIO/Scheduler", "org.kde.KIO.Scheduler",
                                 "reparseSlaveConfiguration", "s", "");
}

} // namespace velq::nettools
