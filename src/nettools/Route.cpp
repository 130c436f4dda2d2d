#include "nettools/Route.h"

#include "nettools/lib/Output.h"
#include "nettools/lib/RouteText.h"
#include "platform/linux/rtnetlink/Links.h"

#include <linux/rtnetlink.h>

#include <arpa/inet.h>
#include <cstring>
#include <memory>
#include <netdb.h>

namespace velq::nettools
{

namespace
{

using rtnetlink::Address;
using rtnetlink::Route;
using rtnetlink::Socket;

struct Request {
    bool inNumbers = false;
    std::string_view destination;
    std::string complaint; ///< what is wrong with the call; empty when nothing is
};

Request readRequest(Arguments arguments)
{
    Request request;
    std::string_view command;
    for (const std::string_view word : arguments) {
        if (word == "-n")
            request.inNumbers = true;
        else if (word.starts_with('-'))
            request.complaint = std::string("unknown option ").append(word);
        else if (command.empty())
            command = word;
        else if (request.destination.empty())
            request.destination = word;
        else
            request.complaint = std::string("unexpected argument ").append(word);
    }
    if (request.complaint.empty() && command != "get")
        request.complaint = "routes can only be shown, with \"get\"";
    else if (request.complaint.empty() && request.destination.empty())
        request.complaint = "get the route to which destination?";
    return request;
}

Address addressFrom(const sockaddr *from)
{
    Address address;
    address.family = static_cast<uint8_t>(from->sa_family);
    const void *bytes = from->sa_family == AF_INET6
        ? static_cast<const void *>(&reinterpret_cast<const sockaddr_in6 *>(from)->sin6_addr)
        : &reinterpret_cast<const sockaddr_in *>(from)->sin_addr;
    std::memcpy(address.bytes.data(), bytes, address.size());
    return address;
}

Address resolved(const std::string &name, int family)
{
    addrinfo hints{};
    hints.ai_family = family;
    hints.ai_socktype = SOCK_DGRAM;
    addrinfo *found = nullptr;
    if (getaddrinfo(name.c_str(), nullptr, &hints, &found) != 0)
        return {};
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, &freeaddrinfo);
    return addressFrom(found->ai_addr);
}

// The entry of the best default route; for IPv4, else for IPv6.
std::optional<Route> defaultRoute(uint8_t family)
{
    std::optional<Route> best;
    auto socket = Socket::open();
    if (!socket)
        return best;
    (void)rtnetlink::readDefaultRoutes(*socket, family, [&](const Route &route) {
        const bool candidate = route.family == family && route.type == RTN_UNICAST
            && route.table == RT_TABLE_MAIN && !route.nextHops.empty();
        if (candidate && (!best || route.priority < best->priority))
            best = route;
        return Socket::Visit::Continue;
    });
    return best;
}

Outcome show(std::string_view shown, const Route &entry, const rtnetlink::NextHop &hop,
             Output &output)
{
    auto socket = Socket::open();
    const auto link = socket ? rtnetlink::linkAt(*socket, hop.interface) : std::nullopt;
    if (!link)
        return Outcome::failed("the interface of the route has just gone");
    const uint32_t mtu = entry.mtu != 0 ? entry.mtu : link->mtu;
    appendRouteAnswer(output.text(), {shown, entry, hop, link->name, mtu});
    return Outcome::done();
}

Outcome showDefault(Output &output)
{
    auto entry = defaultRoute(AF_INET);
    if (!entry)
        entry = defaultRoute(AF_INET6);
    if (!entry)
        return Outcome::failed("there is no default route");
    return show("default", *entry, entry->nextHops.front(), output);
}

// What the table says tells the network; which of its next hops is taken, the kernel's decision
// does.
Outcome showRouteTo(const Address &address, std::string_view shown, Output &output)
{
    auto socket = Socket::open();
    const auto entry = socket ? rtnetlink::matchingEntry(*socket, address) : std::nullopt;
    const auto taken = entry ? rtnetlink::routeTo(*socket, address) : std::nullopt;
    if (!taken || taken->nextHops.empty())
        return Outcome::failed(std::string("there is no route to ").append(shown));
    return show(shown, *entry, taken->nextHops.front(), output);
}

} // namespace

Outcome route(Arguments arguments, Output &output)
{
    const Request request = readRequest(arguments);
    if (!request.complaint.empty())
        return Outcome::misused(request.complaint);
    if (request.destination == "default")
        return showDefault(output);

    const std::string name(request.destination);
    Address address = resolved(name, AF_INET);
    if (!address.isSet())
        address = resolved(name, AF_INET6);
    if (!address.isSet())
        return Outcome::failed("no address is known for " + name);
    return showRouteTo(address, request.inNumbers ? address.text() : name, output);
}

} // namespace velq::nettools
