#include "nettools/lib/InterfaceText.h"

#include "nettools/lib/Addresses.h"
#include "nettools/lib/Numbers.h"

#include <linux/if.h>
#include <linux/if_addr.h>
#include <linux/if_arp.h>
#include <linux/rtnetlink.h>

#include <array>
#include <string_view>

namespace velq::nettools
{

namespace
{

using rtnetlink::InterfaceAddress;
using rtnetlink::Link;

struct Flag {
    uint32_t theirs; ///< of ifconfig's output
    uint32_t ours;   ///< IFF_…
    std::string_view name;
};

// In the order of their bits. Every link that broadcasts does without trailers (SMART) and does not
// hear itself (SIMPLEX); the kernel has no flags for that.
constexpr std::array flags{
    Flag{0x1, IFF_UP, "UP"},
    Flag{0x2, IFF_BROADCAST, "BROADCAST"},
    Flag{0x4, IFF_DEBUG, "DEBUG"},
    Flag{0x8, IFF_LOOPBACK, "LOOPBACK"},
    Flag{0x10, IFF_POINTOPOINT, "POINTOPOINT"},
    Flag{0x20, IFF_BROADCAST, "SMART"},
    Flag{0x40, IFF_RUNNING, "RUNNING"},
    Flag{0x80, IFF_NOARP, "NOARP"},
    Flag{0x100, IFF_PROMISC, "PROMISC"},
    Flag{0x200, IFF_ALLMULTI, "ALLMULTI"},
    Flag{0x800, IFF_BROADCAST, "SIMPLEX"},
    Flag{0x8000, IFF_MULTICAST, "MULTICAST"},
};

void appendFlags(std::string &out, const Link &link)
{
    unsigned number = 0;
    std::string names;
    for (const Flag &flag : flags) {
        if ((link.flags & flag.ours) == 0)
            continue;
        number |= flag.theirs;
        names.append(names.empty() ? "" : ",").append(flag.name);
    }
    out += ": flags=";
    appendNumber(out, number, 16);
    out.append("<").append(names).append("> mtu ");
    appendNumber(out, link.mtu);
    out += '\n';
}

bool isEthernet(const Link &link)
{
    return link.hardwareType == ARPHRD_ETHER;
}

void appendEther(std::string &out, const Link &link)
{
    if (!isEthernet(link) || link.hardwareAddress.empty())
        return;
    out += "\tether";
    char before = ' ';
    for (const uint8_t octet : link.hardwareAddress) {
        out += before;
        out += octet < 16 ? "0" : "";
        appendNumber(out, octet, 16);
        before = ':';
    }
    out += " \n";
}

uint32_t netmask(uint8_t prefixLength)
{
    return prefixLength == 0 ? 0 : ~uint32_t{0} << (32 - prefixLength);
}

void appendPeer(std::string &out, const InterfaceAddress &address)
{
    if (address.peer.isSet())
        out.append("--> ").append(address.peer.text()).append(" ");
}

void appendInet(std::string &out, const InterfaceAddress &address)
{
    out.append("\tinet ").append(address.local.text()).append(" ");
    appendPeer(out, address);
    out += "netmask 0x";
    appendNumber(out, netmask(address.prefixLength), 16);
    out += ' ';
    if (address.broadcast.isSet())
        out.append("broadcast ").append(address.broadcast.text());
    out += '\n';
}

void appendInet6(std::string &out, const InterfaceAddress &address, const Link &link)
{
    const bool scoped = address.scope == RT_SCOPE_LINK;
    out += "\tinet6 ";
    appendAddress(out, address.local, scoped ? std::string_view(link.name) : std::string_view());
    out += ' ';
    appendPeer(out, address);
    out += "prefixlen ";
    appendNumber(out, address.prefixLength);
    out += ' ';
    if ((address.flags & IFA_F_TENTATIVE) != 0)
        out += "tentative ";
    if ((address.flags & IFA_F_DEPRECATED) != 0)
        out += "deprecated ";
    if ((address.flags & IFA_F_TEMPORARY) != 0)
        out += "temporary ";
    if (scoped) {
        out += "scopeid 0x";
        appendNumber(out, link.index, 16);
        out += ' ';
    }
    out += '\n';
}

// The link's own IPv6 address comes first; it is the one that is there before anybody gives any.
void appendAddresses(std::string &out, const Link &link,
                     std::span<const InterfaceAddress> addresses)
{
    const auto append = [&](uint8_t family, bool ofTheLink) {
        for (const InterfaceAddress &address : addresses) {
            if (address.interface != link.index || address.family != family)
                continue;
            if (family == AF_INET)
                appendInet(out, address);
            else if ((address.scope == RT_SCOPE_LINK) == ofTheLink)
                appendInet6(out, address, link);
        }
    };
    append(AF_INET6, true);
    append(AF_INET, false);
    append(AF_INET6, false);
}

} // namespace

void appendInterface(std::string &out, const Link &link,
                     std::span<const InterfaceAddress> addresses)
{
    out += link.name;
    appendFlags(out, link);
    appendEther(out, link);
    appendAddresses(out, link, addresses);
    if (isEthernet(link)) {
        out += link.carries() ? "\tmedia: autoselect\n" : "\tmedia: autoselect (none)\n";
        out += link.carries() ? "\tstatus: active\n" : "\tstatus: inactive\n";
    }
}

} // namespace velq::nettools
