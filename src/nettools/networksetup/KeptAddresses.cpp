#include "nettools/networksetup/KeptAddresses.h"

#include "nettools/lib/PersonFolders.h"
#include "nettools/networksetup/Backend.h"
#include "platform/linux/propertylist/ListFile.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velq::nettools
{

namespace
{

constexpr std::array names = std::to_array<std::pair<ProxyKind, std::string_view>>({
    {ProxyKind::Web, "web"},
    {ProxyKind::SecureWeb, "secureweb"},
    {ProxyKind::Gopher, "gopher"},
    {ProxyKind::Streaming, "streaming"},
    {ProxyKind::Socks, "socks"},
    {ProxyKind::Ftp, "ftp"},
});

void check(const std::error_code &error, const std::string &path)
{
    if (error)
        throw Refusal(path + ": " + error.message());
}

} // namespace

KeptAddresses::KeptAddresses(const std::string &desktop)
    : m_path(propertylist::linkTarget(baseFolder("XDG_STATE_HOME", ".local/state")
                                      + "/velq/proxies/" + desktop))
{
}

ProxyAddresses KeptAddresses::read() const
{
    const propertylist::FileBytes file = propertylist::readFile(m_path);
    if (!file.isMissing())
        check(file.error, m_path);
    return keptIn(file.bytes);
}

void KeptAddresses::lock()
{
    check(propertylist::makeFolderOf(m_path), m_path);
    m_lock = std::make_unique<propertylist::FileLock>(m_path);
    check(m_lock->error(), m_path);
}

void KeptAddresses::write(const ProxyAddresses &addresses) const
{
    if (read() != addresses)
        check(propertylist::replaceFile(m_path, keptText(addresses)), m_path);
}

std::string keptText(const ProxyAddresses &addresses)
{
    std::string text;
    for (const auto &[kind, name] : names) {
        if (const auto found = addresses.find(kind); found != addresses.end())
            text.append(name).append(" ").append(found->second).append("\n");
    }
    return text;
}

ProxyAddresses keptIn(std::string_view text)
{
    ProxyAddresses addresses;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        const std::string_view name = line.substr(0, line.find(' '));
        const auto *known =
            std::ranges::find(names, name, &std::pair<ProxyKind, std::string_view>::second);
        if (known != names.end() && line.size() > name.size() + 1)
            addresses[known->first] = line.substr(name.size() + 1);
    }
    return addresses;
}

} // namespace velq::nettools
