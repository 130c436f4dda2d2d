#include "platform/linux/rtnetlink/InterfaceAddresses.h"

#include "platform/linux/rtnetlink/Message.h"

#include <linux/if_addr.h>

namespace velq::rtnetlink
{

namespace
{

std::optional<InterfaceAddress> interfaceAddressFrom(const nlmsghdr &message)
{
    const auto *fixed = headerOf<ifaddrmsg>(message);
    if (message.nlmsg_type != RTM_NEWADDR || fixed == nullptr)
        return std::nullopt;

    InterfaceAddress found{fixed->ifa_family,
                           fixed->ifa_prefixlen,
                           fixed->ifa_scope,
                           fixed->ifa_index,
                           fixed->ifa_flags,
                           {},
                           {},
                           {}};
    Address remote;
    eachAttribute<ifaddrmsg>(message, [&](uint16_t type, const nlattr *attribute) {
        if (type == IFA_LOCAL)
            found.local = addressFrom(found.family, payload(attribute));
        else if (type == IFA_ADDRESS)
            remote = addressFrom(found.family, payload(attribute));
        else if (type == IFA_BROADCAST)
            found.broadcast = addressFrom(found.family, payload(attribute));
        else if (type == IFA_FLAGS)
            found.flags = number(attribute);
    });
    // Without a peer the kernel gives the link's own address twice, or, for IPv6, only there.
    if (!found.local.isSet())
        found.local = remote;
    else if (remote != found.local)
        found.peer = remote;
    return found;
}

} // namespace

bool readInterfaceAddresses(Socket &socket, uint8_t family, const Reader<InterfaceAddress> &reader)
{
    RequestBuffer buffer{};
    startRequest<ifaddrmsg>(buffer, RTM_GETADDR, NLM_F_DUMP)->ifa_family = family;
    return socket.ask(header(buffer), parsed(reader, interfaceAddressFrom));
}

} // namespace velq::rtnetlink
