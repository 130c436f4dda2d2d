#include "nettools/networksetup/ProxyCommands.h"

#include "nettools/networksetup/Commands.h"
#include "nettools/networksetup/Proxies.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace velq::nettools
{

namespace
{

struct KindName {
    std::string_view name;
    ProxyKind kind;
};

constexpr std::array kinds = std::to_array<KindName>({
    {"webproxy", ProxyKind::Web},
    {"securewebproxy", ProxyKind::SecureWeb},
    {"gopherproxy", ProxyKind::Gopher},
    {"streamingproxy", ProxyKind::Streaming},
    {"socksfirewallproxy", ProxyKind::Socks},
    {"ftpproxy", ProxyKind::Ftp},
});

ProxyKind kindNamed(std::string_view name)
{
    const auto *found = std::ranges::find(kinds, name, &KindName::name);
    if (found == kinds.end())
        throw Misuse("unknown form");
    return found->kind;
}

uint16_t portFrom(std::string_view word)
{
    uint16_t port = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), port);
    if (error != std::errc() || end != word.data() + word.size() || port == 0)
        throw Misuse("'" + std::string(word) + "' is not a port from 1 to 65535");
    return port;
}

// A host's name or address; anything else would end up in the settings of every program.
std::string hostFrom(std::string_view word)
{
    constexpr std::string_view allowed =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789.-_:[]";
    constexpr size_t longest = 253;
    if (word.empty() || word.size() > longest
        || word.find_first_not_of(allowed) != std::string_view::npos)
        throw Misuse("'" + std::string(word) + "' is not the name of a host");
    return std::string(word);
}

} // namespace

void performOnProxy(std::string_view form, Arguments arguments, std::string &out)
{
    constexpr std::string_view verb = "-get";
    constexpr std::string_view state = "state";
    std::string_view name = form.substr(verb.size());
    if (form.starts_with(verb)) {
        appendProxy(out, proxies::read(kindNamed(name)));
    } else if (name.ends_with(state)) {
        name.remove_suffix(state.size());
        proxies::setState(kindNamed(name), switchFrom(arguments[0]));
    } else {
        proxies::set(kindNamed(name), hostFrom(arguments[0]), portFrom(arguments[1]));
    }
}

} // namespace velq::nettools
