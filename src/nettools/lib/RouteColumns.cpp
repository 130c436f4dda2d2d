#include "nettools/lib/RouteColumns.h"

#include <algorithm>
#include <sys/socket.h>

namespace velq::nettools
{

namespace
{

constexpr size_t expireWidth = 6;
// The interface's name is pushed to the right end of a field that begins with the flags.
constexpr size_t flagsAndInterfaceWidth = 25;

size_t addressWidth(uint8_t family)
{
    return family == AF_INET ? 18 : 39;
}

void appendBlanks(std::string &out, size_t width, size_t used)
{
    out.append(width > used ? width - used : 0, ' ');
}

void appendLeft(std::string &out, std::string_view text, size_t width)
{
    out += text;
    appendBlanks(out, width, text.size());
    out += ' ';
}

} // namespace

void appendHeading(std::string &out, uint8_t family)
{
    out += family == AF_INET ? "Internet:\n" : "Internet6:\n";
    appendRow(out, family, {"Destination", "Gateway", "Flags", "Netif", "Expire"});
}

void appendRow(std::string &out, uint8_t family, const RouteFields &fields)
{
    appendLeft(out, fields.destination, addressWidth(family));
    appendLeft(out, fields.gateway, addressWidth(family));
    const size_t used = fields.flags.size() + fields.interfaceName.size();
    out += fields.flags;
    appendBlanks(out, std::max(flagsAndInterfaceWidth, used + 1), used);
    out += fields.interfaceName;
    out += ' ';
    appendBlanks(out, expireWidth, fields.expire.size());
    out += fields.expire;
    out += '\n';
}

} // namespace velq::nettools
