#include "platform/linux/rtnetlink/Routes.h"

#include "platform/linux/rtnetlink/Message.h"

#include <linux/fib_rules.h>

namespace velq::rtnetlink
{

namespace
{

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

uint32_t mtuFrom(const nlattr *metrics)
{
    uint32_t mtu = 0;
    const auto bytes = payload(metrics);
    eachAttribute(bytes.data(), bytes.size(), [&](uint16_t type, const nlattr *attribute) {
        if (type == RTAX_MTU)
            mtu = number(attribute);
    });
    return mtu;
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
        case RTA_METRICS:
            route.mtu = mtuFrom(attribute);
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

bool dumpRoutes(Socket &socket, uint8_t family, uint8_t type, const Socket::Visitor &visit)
{
    RequestBuffer buffer{};
    auto *request = startRequest<rtmsg>(buffer, RTM_GETROUTE, NLM_F_DUMP);
    request->rtm_family = family;
    request->rtm_type = type;
    return socket.ask(header(buffer), visit);
}

std::optional<Route> askAbout(Socket &socket, const Address &destination, uint32_t flags)
{
    RequestBuffer buffer{};
    auto *request = startRequest<rtmsg>(buffer, RTM_GETROUTE, 0);
    request->rtm_family = destination.family;
    request->rtm_dst_len = static_cast<uint8_t>(destination.size() * 8);
    request->rtm_flags = flags;
    mnl_attr_put(header(buffer), RTA_DST, destination.size(), destination.bytes.data());
    return askForOne<Route>(socket, header(buffer), routeFrom);
}

} // namespace

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

std::optional<Route> routeTo(Socket &socket, const Address &destination)
{
    return askAbout(socket, destination, 0);
}

std::optional<Route> matchingEntry(Socket &socket, const Address &destination)
{
    return askAbout(socket, destination, RTM_F_FIB_MATCH);
}

} // namespace velq::rtnetlink
