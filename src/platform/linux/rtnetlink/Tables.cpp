#include "platform/linux/rtnetlink/Tables.h"

#include <libmnl/libmnl.h>
#include <linux/fib_rules.h>
#include <linux/if.h>
#include <linux/if_addr.h>
#include <linux/if_link.h>
#include <linux/neighbour.h>
#include <linux/rtnetlink.h>

#include <algorithm>
#include <arpa/inet.h>
#include <cstring>
#include <span>
#include <unistd.h>

namespace velq::rtnetlink
{

namespace
{

using RequestBuffer = std::array<std::byte, 256>;

template <typename Header>
Header *startRequest(RequestBuffer &buffer, uint16_t type, uint16_t flags)
{
    nlmsghdr *message = mnl_nlmsg_put_header(buffer.data());
    message->nlmsg_type = type;
    message->nlmsg_flags = static_cast<uint16_t>(NLM_F_REQUEST | flags);
    return static_cast<Header *>(mnl_nlmsg_put_extra_header(message, sizeof(Header)));
}

nlmsghdr *header(RequestBuffer &buffer)
{
    return reinterpret_cast<nlmsghdr *>(buffer.data());
}

std::span<const uint8_t> payload(const nlattr *attribute)
{
    return {static_cast<const uint8_t *>(mnl_attr_get_payload(attribute)),
            mnl_attr_get_payload_len(attribute)};
}

uint32_t number(const nlattr *attribute)
{
    return mnl_attr_validate(attribute, MNL_TYPE_U32) < 0 ? 0 : mnl_attr_get_u32(attribute);
}

std::string text(const nlattr *attribute)
{
    const auto bytes = payload(attribute);
    const auto *begin = reinterpret_cast<const char *>(bytes.data());
    return {begin, strnlen(begin, bytes.size())};
}

Address addressFrom(uint8_t family, std::span<const uint8_t> bytes)
{
    Address address;
    address.family = family;
    if (bytes.size() != address.size())
        return {};
    std::ranges::copy(bytes, address.bytes.begin());
    return address;
}

// An IPv4 route over an IPv6 gateway (RFC 8950) carries the family in front of the address.
Address viaFrom(const nlattr *attribute)
{
    const auto bytes = payload(attribute);
    if (bytes.size() < sizeof(uint16_t))
        return {};
    uint16_t family = 0;
    std::memcpy(&family, bytes.data(), sizeof family);
    return addressFrom(static_cast<uint8_t>(family), bytes.subspan(sizeof family));
}

// The kernel counts the ages of its entries in the clock ticks it shows to programs.
uint32_t secondsSinceConfirmed(const nlattr *attribute)
{
    const auto bytes = payload(attribute);
    nda_cacheinfo ages{};
    if (bytes.size() < sizeof ages)
        return 0;
    std::memcpy(&ages, bytes.data(), sizeof ages);
    return ages.ndm_confirmed / static_cast<uint32_t>(sysconf(_SC_CLK_TCK));
}

// Attributes of one message, or of one nested attribute, each handed to `use` with its type.
template <typename Use> void eachAttribute(const void *from, size_t length, Use use)
{
    const auto *attribute = static_cast<const nlattr *>(from);
    auto left = static_cast<int>(length);
    while (mnl_attr_ok(attribute, left)) {
        use(mnl_attr_get_type(attribute), attribute);
        left -= static_cast<int>(MNL_ALIGN(attribute->nla_len));
        attribute = mnl_attr_next(attribute);
    }
}

template <typename Header, typename Use> void eachAttribute(const nlmsghdr &message, Use use)
{
    const size_t used = MNL_ALIGN(sizeof(Header));
    const size_t length = mnl_nlmsg_get_payload_len(&message);
    if (length >= used)
        eachAttribute(mnl_nlmsg_get_payload_offset(&message, sizeof(Header)), length - used, use);
}

template <typename Header> const Header *headerOf(const nlmsghdr &message)
{
    if (mnl_nlmsg_get_payload_len(&message) < sizeof(Header))
        return nullptr;
    return static_cast<const Header *>(mnl_nlmsg_get_payload(&message));
}

std::vector<NextHop> multipathFrom(uint8_t family, const nlattr *attribute)
{
    std::vector<NextHop> hops;
    auto rest = payload(attribute);
    while (rest.size() >= sizeof(rtnexthop)) {
        rtnexthop hop{};
        std::memcpy(&hop, rest.data(), sizeof hop);
        if (hop.rtnh_len < sizeof hop || hop.rtnh_len > rest.size())
            break;
        NextHop next{static_cast<uint32_t>(hop.rtnh_ifindex), hop.rtnh_flags, {}};
        eachAttribute(rest.data() + sizeof hop, hop.rtnh_len - sizeof hop,
                      [&](uint16_t type, const nlattr *nested) {
                          if (type == RTA_GATEWAY)
                              next.gateway = addressFrom(family, payload(nested));
                          else if (type == RTA_VIA)
                              next.gateway = viaFrom(nested);
                      });
        hops.push_back(next);
        rest = rest.subspan(std::min<size_t>(RTNH_ALIGN(hop.rtnh_len), rest.size()));
    }
    return hops;
}

std::optional<Route> routeFrom(const nlmsghdr &message)
{
    const auto *fixed = headerOf<rtmsg>(message);
    if (message.nlmsg_type != RTM_NEWROUTE || fixed == nullptr)
        return std::nullopt;

    Route route;
    route.family = fixed->rtm_family;
    route.prefixLength = fixed->rtm_dst_len;
    route.type = fixed->rtm_type;
    route.scope = fixed->rtm_scope;
    route.table = fixed->rtm_table;
    route.protocol = fixed->rtm_protocol;
    route.flags = fixed->rtm_flags;
    NextHop single{0, static_cast<uint8_t>(fixed->rtm_flags), {}};
    eachAttribute<rtmsg>(message, [&](uint16_t type, const nlattr *attribute) {
        switch (type) {
        case RTA_TABLE:
            route.table = number(attribute);
            break;
        case RTA_PRIORITY:
            route.priority = number(attribute);
            break;
        case RTA_DST:
            route.destination = addressFrom(route.family, payload(attribute));
            break;
        case RTA_PREFSRC:
            route.preferredSource = addressFrom(route.family, payload(attribute));
            break;
        case RTA_OIF:
            single.interface = number(attribute);
            break;
        case RTA_GATEWAY:
            single.gateway = addressFrom(route.family, payload(attribute));
            break;
        case RTA_VIA:
            single.gateway = viaFrom(attribute);
            break;
        case RTA_MULTIPATH:
            route.nextHops = multipathFrom(route.family, attribute);
            break;
        default:
            break;
        }
    });
    if (route.nextHops.empty() && single.interface != 0)
        route.nextHops.push_back(single);
    return route;
}

std::optional<Route> defaultRouteFrom(const nlmsghdr &message)
{
    const auto *fixed = headerOf<rtmsg>(message);
    return fixed == nullptr || fixed->rtm_dst_len != 0 ? std::nullopt : routeFrom(message);
}

std::optional<uint32_t> ruleTableFrom(const nlmsghdr &message)
{
    const auto *fixed = headerOf<fib_rule_hdr>(message);
    if (message.nlmsg_type != RTM_NEWRULE || fixed == nullptr || fixed->action != FR_ACT_TO_TBL)
        return std::nullopt;
    uint32_t table = fixed->table;
    eachAttribute<fib_rule_hdr>(message, [&](uint16_t type, const nlattr *attribute) {
        if (type == FRA_TABLE)
            table = number(attribute);
    });
    return table;
}

std::optional<uint8_t> addressScopeFrom(const nlmsghdr &message)
{
    const auto *fixed = headerOf<ifaddrmsg>(message);
    if (message.nlmsg_type != RTM_NEWADDR || fixed == nullptr)
        return std::nullopt;
    return fixed->ifa_scope;
}

std::string kindFrom(const nlattr *linkInfo)
{
    std::string kind;
    const auto bytes = payload(linkInfo);
    eachAttribute(bytes.data(), bytes.size(), [&](uint16_t type, const nlattr *attribute) {
        if (type == IFLA_INFO_KIND)
            kind = text(attribute);
    });
    return kind;
}

std::optional<Link> linkFrom(const nlmsghdr &message)
{
    const auto *fixed = headerOf<ifinfomsg>(message);
    if (message.nlmsg_type != RTM_NEWLINK || fixed == nullptr)
        return std::nullopt;

    Link link;
    link.index = static_cast<uint32_t>(fixed->ifi_index);
    link.flags = fixed->ifi_flags;
    link.hardwareType = fixed->ifi_type;
    eachAttribute<ifinfomsg>(message, [&](uint16_t type, const nlattr *attribute) {
        const auto bytes = payload(attribute);
        switch (type) {
        case IFLA_IFNAME:
            link.name = text(attribute);
            break;
        case IFLA_MTU:
            link.mtu = number(attribute);
            break;
        case IFLA_MASTER:
            link.master = number(attribute);
            break;
        case IFLA_ADDRESS:
            link.hardwareAddress.assign(bytes.begin(), bytes.end());
            break;
        case IFLA_LINKINFO:
            link.kind = kindFrom(attribute);
            break;
        default:
            break;
        }
    });
    return link;
}

std::optional<Neighbour> neighbourFrom(const nlmsghdr &message)
{
    const auto *fixed = headerOf<ndmsg>(message);
    if (message.nlmsg_type != RTM_NEWNEIGH || fixed == nullptr)
        return std::nullopt;

    Neighbour neighbour;
    neighbour.family = fixed->ndm_family;
    neighbour.interface = static_cast<uint32_t>(fixed->ndm_ifindex);
    neighbour.state = fixed->ndm_state;
    neighbour.flags = fixed->ndm_flags;
    eachAttribute<ndmsg>(message, [&](uint16_t type, const nlattr *attribute) {
        const auto bytes = payload(attribute);
        if (type == NDA_DST)
            neighbour.address = addressFrom(neighbour.family, bytes);
        else if (type == NDA_LLADDR)
            neighbour.hardwareAddress.assign(bytes.begin(), bytes.end());
        else if (type == NDA_CACHEINFO)
            neighbour.confirmedAgo = secondsSinceConfirmed(attribute);
    });
    return neighbour;
}

template <typename Record, typename Parse>
Socket::Visitor parsed(const Reader<Record> &reader, Parse parse)
{
    return [&reader, parse](const nlmsghdr &message) {
        const std::optional<Record> record = parse(message);
        return record ? reader(*record) : Socket::Visit::Continue;
    };
}

bool dumpRoutes(Socket &socket, uint8_t family, uint8_t type, const Socket::Visitor &visit)
{
    RequestBuffer buffer{};
    auto *request = startRequest<rtmsg>(buffer, RTM_GETROUTE, NLM_F_DUMP);
    request->rtm_family = family;
    request->rtm_type = type;
    return socket.ask(header(buffer), visit);
}

// Statistics make up most of a link's record and nobody here reads them.
void leaveOutStatistics(RequestBuffer &buffer)
{
    mnl_attr_put_u32(header(buffer), IFLA_EXT_MASK, RTEXT_FILTER_SKIP_STATS);
}

} // namespace

size_t Address::size() const
{
    switch (family) {
    case AF_INET:
        return sizeof(in_addr);
    case AF_INET6:
        return sizeof(in6_addr);
    default:
        return 0;
    }
}

std::string Address::text() const
{
    std::array<char, INET6_ADDRSTRLEN> buffer{};
    if (!isSet() || inet_ntop(family, bytes.data(), buffer.data(), buffer.size()) == nullptr)
        return {};
    return buffer.data();
}

bool Link::carries() const
{
    return (flags & IFF_UP) != 0 && (flags & IFF_LOWER_UP) != 0 && (flags & IFF_DORMANT) == 0;
}

bool Link::isLoopback() const
{
    return (flags & IFF_LOOPBACK) != 0;
}

bool Neighbour::isConfirmed() const
{
    constexpr uint16_t known = NUD_REACHABLE | NUD_STALE | NUD_DELAY | NUD_PROBE | NUD_PERMANENT;
    return (state & known) != 0 && !hardwareAddress.empty();
}

bool readRoutes(Socket &socket, uint8_t family, uint8_t type, const Reader<Route> &reader)
{
    return dumpRoutes(socket, family, type, parsed(reader, routeFrom));
}

bool readDefaultRoutes(Socket &socket, uint8_t family, const Reader<Route> &reader)
{
    return dumpRoutes(socket, family, 0, parsed(reader, defaultRouteFrom));
}

bool readRuleTables(Socket &socket, uint8_t family, const Reader<uint32_t> &reader)
{
    RequestBuffer buffer{};
    startRequest<fib_rule_hdr>(buffer, RTM_GETRULE, NLM_F_DUMP)->family = family;
    return socket.ask(header(buffer), parsed(reader, ruleTableFrom));
}

bool readAddressScopes(Socket &socket, uint8_t family, const Reader<uint8_t> &reader)
{
    RequestBuffer buffer{};
    startRequest<ifaddrmsg>(buffer, RTM_GETADDR, NLM_F_DUMP)->ifa_family = family;
    return socket.ask(header(buffer), parsed(reader, addressScopeFrom));
}

std::optional<Route> routeTo(Socket &socket, const Address &destination)
{
    RequestBuffer buffer{};
    auto *request = startRequest<rtmsg>(buffer, RTM_GETROUTE, 0);
    request->rtm_family = destination.family;
    request->rtm_dst_len = static_cast<uint8_t>(destination.size() * 8);
    mnl_attr_put(header(buffer), RTA_DST, destination.size(), destination.bytes.data());

    std::optional<Route> found;
    const Reader<Route> keep = [&](const Route &route) {
        found = route;
        return Socket::Visit::Continue;
    };
    if (!socket.ask(header(buffer), parsed(keep, routeFrom)))
        return std::nullopt;
    return found;
}

bool readLinks(Socket &socket, const Reader<Link> &reader)
{
    RequestBuffer buffer{};
    startRequest<ifinfomsg>(buffer, RTM_GETLINK, NLM_F_DUMP);
    leaveOutStatistics(buffer);
    return socket.ask(header(buffer), parsed(reader, linkFrom));
}

std::optional<Link> linkAt(Socket &socket, uint32_t index)
{
    RequestBuffer buffer{};
    auto *request = startRequest<ifinfomsg>(buffer, RTM_GETLINK, 0);
    request->ifi_index = static_cast<int>(index);
    leaveOutStatistics(buffer);

    std::optional<Link> found;
    const Reader<Link> keep = [&](const Link &link) {
        found = link;
        return Socket::Visit::Continue;
    };
    if (!socket.ask(header(buffer), parsed(keep, linkFrom)))
        return std::nullopt;
    return found;
}

bool readNeighbours(Socket &socket, uint8_t family, const Reader<Neighbour> &reader)
{
    RequestBuffer buffer{};
    auto *request = startRequest<ndmsg>(buffer, RTM_GETNEIGH, NLM_F_DUMP);
    request->ndm_family = family;
    return socket.ask(header(buffer), parsed(reader, neighbourFrom));
}

} // namespace velq::rtnetlink
