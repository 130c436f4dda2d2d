#include "nettools/Netstat.h"

#include "nettools/lib/Addresses.h"
#include "nettools/lib/Options.h"
#include "nettools/lib/Output.h"
#include "nettools/lib/RouteColumns.h"
#include "nettools/lib/RouteFlags.h"
#include "nettools/lib/RoutingTable.h"

#include <cerrno>
#include <cstring>
#include <sys/socket.h>

namespace velq::nettools
{

namespace
{

std::string destinationText(const RouteRow &row)
{
    std::string text;
    const std::string_view zone = zoneOf(row.destination, *row.link);
    if (row.isHost)
        appendAddress(text, row.destination, zone);
    else
        appendNetwork(text, row.destination, row.prefixLength, zone);
    return text;
}

std::string expireText(const RouteRow &row)
{
    if (!row.secondsLeft)
        return {};
    return *row.secondsLeft > 0 ? std::to_string(*row.secondsLeft) : "!";
}

void appendSection(std::string &out, const KernelTables &tables, uint8_t family)
{
    const std::vector<RouteRow> rows = routingTable(tables, family);
    if (rows.empty())
        return;
    out += '\n';
    appendHeading(out, family);
    for (const RouteRow &row : rows)
        appendRow(out, family,
                  {destinationText(row), row.gateway, flagLetters(row.flags), row.interfaceName,
                   expireText(row)});
}

} // namespace

Outcome netstat(Arguments arguments, Output &output)
{
    const Options options = readOptions(arguments, "nr");
    if (!options.complaint.empty())
        return Outcome::misused(options.complaint);
    if (!options.has('n') || !options.has('r'))
        return Outcome::misused("only the routing tables in numbers can be shown");

    const auto tables = readRoutingState();
    if (!tables)
        return Outcome::failed(std::string("cannot read the routing tables: ")
                               + std::strerror(errno));
    output.text() += "Routing tables\n";
    appendSection(output.text(), *tables, AF_INET);
    appendSection(output.text(), *tables, AF_INET6);
    return Outcome::done();
}

} // namespace velq::nettools
