#include "nettools/networksetup/ProxyAddress.h"

#include <algorithm>
#include <charconv>

namespace velq::nettools
{

namespace
{

constexpr uint16_t usualPort = 80;
constexpr uint16_t usualSocksPort = 1080;

// A lone IPv6 address has colons, too, but none of them is before a port.
size_t endOfServer(std::string_view text)
{
    if (const size_t blank = text.rfind(' '); blank != std::string_view::npos)
        return blank;
    if (text.starts_with('['))
        return text.find(':', text.find(']'));
    return std::ranges::count(text, ':') == 1 ? text.find(':') : std::string_view::npos;
}

uint16_t portIn(std::string_view text)
{
    uint16_t port = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), port);
    return error == std::errc() && end == text.data() + text.size() ? port : uint16_t{0};
}

std::string_view withoutSlash(std::string_view text)
{
    return text.ends_with('/') ? text.substr(0, text.size() - 1) : text;
}

std::string_view withoutBrackets(std::string_view text)
{
    return text.starts_with('[') && text.ends_with(']') ? text.substr(1, text.size() - 2) : text;
}

} // namespace

Proxy proxyAt(ProxyKind kind, std::string_view address)
{
    constexpr std::string_view afterScheme = "://";
    Proxy proxy;
    if (const size_t scheme = address.find(afterScheme); scheme != std::string_view::npos)
        address.remove_prefix(scheme + afterScheme.size());
    if (const size_t at = address.rfind('@'); at != std::string_view::npos) {
        proxy.authenticated = true;
        address.remove_prefix(at + 1);
    }
    address = withoutSlash(address);
    const size_t end = endOfServer(address);
    proxy.server = withoutBrackets(withoutSlash(address.substr(0, end)));
    if (end != std::string_view::npos)
        proxy.port = portIn(address.substr(end + 1));
    else
        proxy.port = kind == ProxyKind::Socks ? usualSocksPort : usualPort;
    return proxy;
}

} // namespace velq::nettools
