#include "platform/linux/rtnetlink/Links.h"

#include "platform/linux/rtnetlink/Message.h"

#include <linux/if.h>
#include <linux/if_link.h>

namespace velq::rtnetlink
{

namespace
{

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

// Statistics make up most of a link's record and nobody here reads them.
void leaveOutStatistics(RequestBuffer &buffer)
{
    mnl_attr_put_u32(header(buffer), IFLA_EXT_MASK, RTEXT_FILTER_SKIP_STATS);
}

} // namespace

bool Link::carries() const
{
    return (flags & IFF_UP) != 0 && (flags & IFF_LOWER_UP) != 0 && (flags & IFF_DORMANT) == 0;
}

bool Link::isLoopback() const
{
    return (flags & IFF_LOOPBACK) != 0;
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
    return askForOne<Link>(socket, header(buffer), linkFrom);
}

std::optional<Link> linkNamed(Socket &socket, std::string_view name)
{
    // The kernel answers a request for no link in particular with all of them.
    if (name.empty() || name.size() >= IFNAMSIZ)
        return std::nullopt;
    RequestBuffer buffer{};
    startRequest<ifinfomsg>(buffer, RTM_GETLINK, 0);
    mnl_attr_put_strz(header(buffer), IFLA_IFNAME, std::string(name).c_str());
    leaveOutStatistics(buffer);
    return askForOne<Link>(socket, header(buffer), linkFrom);
}

bool setLinkUp(Socket &socket, uint32_t index, bool up)
{
    RequestBuffer buffer{};
    auto *request = startRequest<ifinfomsg>(buffer, RTM_SETLINK, NLM_F_ACK);
    request->ifi_index = static_cast<int>(index);
    request->ifi_change = IFF_UP;
    request->ifi_flags = up ? IFF_UP : 0;
    return socket.ask(header(buffer), [](const nlmsghdr &) { return Socket::Visit::Continue; });
}

bool setLinkMtu(Socket &socket, uint32_t index, uint32_t mtu)
{
    RequestBuffer buffer{};
    startRequest<ifinfomsg>(buffer, RTM_SETLINK, NLM_F_ACK)->ifi_index = static_cast<int>(index);
    mnl_attr_put_u32(header(buffer), IFLA_MTU, mtu);
    return socket.ask(header(buffer), [](const nlmsghdr &) { return Socket::Visit::Continue; });
}

} // namespace velq::rtnetlink
