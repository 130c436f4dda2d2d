#include "nettools/lib/Kernel.h"

#include <algorithm>
#include <cerrno>
#include <sys/socket.h>

namespace velq::nettools
{

namespace
{

using rtnetlink::Socket;

// A kernel without IPv6 answers a question about it with what it has of all families.
template <typename Record> auto ofFamily(uint8_t family, std::vector<Record> &records)
{
    return [family, &records](const Record &record) {
        if (record.family == family)
            records.push_back(record);
        return Socket::Visit::Continue;
    };
}

bool readLinksInto(Socket &socket, KernelTables &tables)
{
    const bool read = rtnetlink::readLinks(socket, [&tables](const rtnetlink::Link &link) {
        tables.links.push_back(link);
        return Socket::Visit::Continue;
    });
    if (!read)
        return false;
    std::ranges::sort(tables.links, {}, &rtnetlink::Link::index);
    return true;
}

bool readFamily(Socket &socket, uint8_t family, KernelTables &tables)
{
    return rtnetlink::readRoutes(socket, family, 0, ofFamily(family, tables.routes))
        && rtnetlink::readNeighbours(socket, family, ofFamily(family, tables.neighbours));
}

// A table that changes while it is handed over arrives torn, and what is left of it in the socket
// would mix with the next answer: read all of it again, through a new socket.
template <typename Read> std::optional<KernelTables> readWhole(Read read)
{
    constexpr int attempts = 10;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        auto socket = Socket::open();
        if (!socket)
            return std::nullopt;
        KernelTables tables;
        if (read(*socket, tables))
            return tables;
        if (errno != EINTR)
            return std::nullopt;
    }
    return std::nullopt;
}

} // namespace

const rtnetlink::Link *KernelTables::link(uint32_t index) const
{
    const auto found = std::ranges::lower_bound(links, index, {}, &rtnetlink::Link::index);
    return found != links.end() && found->index == index ? &*found : nullptr;
}

const rtnetlink::Link *KernelTables::linkNamed(std::string_view name) const
{
    const auto found = std::ranges::find(links, name, &rtnetlink::Link::name);
    return found != links.end() ? &*found : nullptr;
}

const rtnetlink::Link *KernelTables::loopback() const
{
    const auto found = std::ranges::find_if(links, &rtnetlink::Link::isLoopback);
    return found != links.end() ? &*found : nullptr;
}

std::optional<KernelTables> readRoutingState()
{
    return readWhole([](Socket &socket, KernelTables &tables) {
        return readLinksInto(socket, tables) && readFamily(socket, AF_INET, tables)
            && readFamily(socket, AF_INET6, tables);
    });
}

std::optional<KernelTables> readInterfaces()
{
    return readWhole([](Socket &socket, KernelTables &tables) {
        return readLinksInto(socket, tables)
            && rtnetlink::readInterfaceAddresses(socket, AF_INET,
                                                 ofFamily(AF_INET, tables.addresses))
            && rtnetlink::readInterfaceAddresses(socket, AF_INET6,
                                                 ofFamily(AF_INET6, tables.addresses));
    });
}

std::optional<KernelTables> readNeighbourhood()
{
    return readWhole([](Socket &socket, KernelTables &tables) {
        return readLinksInto(socket, tables)
            && rtnetlink::readNeighbours(socket, AF_INET, ofFamily(AF_INET, tables.neighbours));
    });
}

} // namespace velq::nettools
