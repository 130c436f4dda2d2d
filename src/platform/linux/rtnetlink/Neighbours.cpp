#include "platform/linux/rtnetlink/Neighbours.h"

#include "platform/linux/rtnetlink/Message.h"

#include <linux/neighbour.h>

#include <unistd.h>

namespace velq::rtnetlink
{

namespace
{

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

} // namespace

bool Neighbour::isConfirmed() const
{
    constexpr uint16_t known = NUD_REACHABLE | NUD_STALE | NUD_DELAY | NUD_PROBE | NUD_PERMANENT;
    return (state & known) != 0 && !hardwareAddress.empty();
}

bool readNeighbours(Socket &socket, uint8_t family, const Reader<Neighbour> &reader)
{
    RequestBuffer buffer{};
    auto *request = startRequest<ndmsg>(buffer, RTM_GETNEIGH, NLM_F_DUMP);
    request->ndm_family = family;
    return socket.ask(header(buffer), parsed(reader, neighbourFrom));
}

} // namespace velq::rtnetlink
