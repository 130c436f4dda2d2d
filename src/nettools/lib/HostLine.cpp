#include "nettools/lib/HostLine.h"

#include <linux/if_arp.h>

namespace velq::nettools
{

std::string_view mediumOf(const rtnetlink::Link &link)
{
    if (link.kind == "bridge")
        return "bridge";
    if (link.kind == "vlan")
        return "vlan";
    if (link.hardwareType == ARPHRD_ETHER)
        return "ethernet";
    if (link.hardwareType == ARPHRD_IEEE1394)
        return "firewire";
    return {};
}

void appendHostLine(std::string &out, const HostFields &fields)
{
    out.append(fields.name).append(" (").append(fields.address).append(") at ");
    out.append(fields.hardwareAddress).append(" on ").append(fields.interfaceName);
    out += " ifscope";
    if (fields.permanent)
        out += " permanent";
    if (!fields.medium.empty())
        out.append(" [").append(fields.medium).append("]");
    out += '\n';
}

} // namespace velq::nettools
