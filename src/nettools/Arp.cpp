#include "nettools/Arp.h"

#include "nettools/lib/Addresses.h"
#include "nettools/lib/HostLine.h"
#include "nettools/lib/HostNames.h"
#include "nettools/lib/Kernel.h"
#include "nettools/lib/Neighbours.h"
#include "nettools/lib/Options.h"
#include "nettools/lib/Output.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <linux/neighbour.h>

namespace velq::nettools
{

namespace
{

using rtnetlink::Link;
using rtnetlink::Neighbour;

void appendEntry(std::string &out, const Neighbour &neighbour, const Link &link,
                 std::string_view name)
{
    const NeighbourKind kind = kindOf(neighbour);
    std::string address;
    appendAddress(address, neighbour.address, {});
    std::string hardware;
    if (kind == NeighbourKind::Unanswered)
        hardware = "(incomplete)";
    else
        appendHardwareAddress(hardware, neighbour.hardwareAddress);
    const bool permanent = kind == NeighbourKind::Group || (neighbour.state & NUD_PERMANENT) != 0;
    appendHostLine(out, {name, address, hardware, link.name, permanent, mediumOf(link)});
}

bool comesBefore(const Neighbour &left, const Neighbour &right)
{
    if (left.address.bytes != right.address.bytes)
        return left.address.bytes < right.address.bytes;
    return left.interface < right.interface;
}

} // namespace

Outcome arp(Arguments arguments, Output &output)
{
    const Options options = readOptions(arguments, "an");
    if (!options.complaint.empty())
        return Outcome::misused(options.complaint);
    if (!options.has('a'))
        return Outcome::misused("only the whole table can be shown");

    auto tables = readNeighbourhood();
    if (!tables)
        return Outcome::failed(std::string("cannot read the neighbour table: ")
                               + std::strerror(errno));
    std::ranges::sort(tables->neighbours, comesBefore);
    HostNames names;
    for (const Neighbour &neighbour : tables->neighbours) {
        const Link *link = tables->link(neighbour.interface);
        if (link == nullptr || kindOf(neighbour) == NeighbourKind::None)
            continue;
        const auto name = options.has('n') ? std::nullopt : names.of(neighbour.address);
        appendEntry(output.text(), neighbour, *link, name.value_or("?"));
    }
    return Outcome::done();
}

} // namespace velq::nettools
