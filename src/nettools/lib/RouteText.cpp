#include "nettools/lib/RouteText.h"

#include "nettools/lib/Addresses.h"

#include <linux/rtnetlink.h>

#include <algorithm>
#include <sys/socket.h>

namespace velq::nettools
{

namespace
{

using rtnetlink::Address;
using rtnetlink::Route;

void appendField(std::string &out, std::string_view label, std::string_view value)
{
    constexpr size_t width = 11;
    out.append(width - std::min(width, label.size()), ' ');
    out.append(label).append(": ").append(value) += '\n';
}

// A column is eight wide, with room for a mark and a blank behind it; the last one has no blank.
void appendMetric(std::string &out, uint32_t value)
{
    constexpr size_t width = 8;
    const std::string digits = std::to_string(value);
    out.append(width - std::min(width, digits.size()), ' ').append(digits).append("  ");
}

void appendMetrics(std::string &out, uint32_t mtu)
{
    constexpr int unknownBeforeMtu = 6;
    out += " recvpipe  sendpipe  ssthresh  rtt,msec    rttvar  hopcount      mtu     expire\n";
    for (int column = 0; column < unknownBeforeMtu; ++column)
        appendMetric(out, 0);
    appendMetric(out, mtu);
    appendMetric(out, 0);
    out.back() = '\n';
}

bool isHost(const Route &route)
{
    return route.prefixLength == (route.family == AF_INET6 ? 128 : 32);
}

std::string mask(const Route &route)
{
    Address ones;
    ones.family = route.family;
    for (size_t bit = 0; bit < route.prefixLength && bit / 8 < ones.bytes.size(); ++bit)
        ones.bytes.at(bit / 8) |= static_cast<uint8_t>(0x80U >> (bit % 8));
    return ones.text();
}

std::string flagNames(const RouteAnswer &answer)
{
    const Route &route = answer.entry;
    const bool hasGateway = answer.hop.gateway.isSet();
    const bool isOurs = route.type == RTN_LOCAL;
    std::string names = "<UP";
    const auto add = [&names](bool applies, std::string_view name) {
        if (applies)
            names.append(",").append(name);
    };
    add(hasGateway, "GATEWAY");
    add(isHost(route), "HOST");
    add(true, "DONE");
    add(!hasGateway && !isHost(route), "CLONING");
    add(!isOurs, "STATIC");
    add(hasGateway && !isHost(route), "PRCLONING");
    add(isOurs, "LOCAL");
    add(!route.destination.isSet(), "GLOBAL");
    return names + ">";
}

} // namespace

void appendRouteAnswer(std::string &out, const RouteAnswer &answer)
{
    const Route &route = answer.entry;
    const bool isDefault = !route.destination.isSet();
    appendField(out, "route to", answer.destination);
    appendField(out, "destination", isDefault ? "default" : route.destination.text());
    if (!isHost(route))
        appendField(out, "mask", isDefault ? "default" : mask(route));
    if (answer.hop.gateway.isSet()) {
        std::string gateway;
        const bool zoned = isLinkScoped(answer.hop.gateway);
        appendAddress(gateway, answer.hop.gateway, zoned ? answer.interfaceName : "");
        appendField(out, "gateway", gateway);
    }
    appendField(out, "interface", answer.interfaceName);
    appendField(out, "flags", flagNames(answer));
    appendMetrics(out, answer.mtu);
}

} // namespace velq::nettools
