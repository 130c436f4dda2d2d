#pragma once

#include "nettools/lib/Form.h"

#include <array>

namespace velq::nettools
{

/// All forms of networksetup. Help and dispatch both read this table.
inline constexpr std::array networksetupForms = std::to_array<Form>({
    {"-listallhardwareports", "", "Shows every network port, its device and hardware address."},
    {"-listallnetworkservices", "", "Shows the services, the preferred one first."},
    {"-listnetworkserviceorder", "", "Shows the services with their ports and devices."},
    {"-getnetworkserviceenabled", "SERVICE",
     "Shows whether the system uses the service by itself."},
    {"-setnetworkserviceenabled", "SERVICE on|off", "Switches a service on or off."},
    {"-getinfo", "SERVICE", "Shows how the service gets its addresses, and which it has."},
    {"-setdhcp", "SERVICE", "Gets the IPv4 address by DHCP."},
    {"-getdnsservers", "SERVICE", "Shows the DNS servers that were set."},
    {"-setdnsservers", "SERVICE ADDRESS...|empty",
     "Sets DNS servers in place of those of the lease, or takes them back."},
    {"-ordernetworkservices", "SERVICE...", "Prefers services in this order to all others."},
    {"-getMTU", "SERVICE|DEVICE", "Shows the size of the largest packet."},
    {"-setMTU", "SERVICE|DEVICE NUMBER", "Sets the size of the largest packet."},
    {"-getwebproxy", "SERVICE", "Shows the HTTP proxy."},
    {"-setwebproxy", "SERVICE HOST PORT", "Sets the HTTP proxy and switches it on."},
    {"-setwebproxystate", "SERVICE on|off", "Switches the HTTP proxy on or off."},
    {"-getsecurewebproxy", "SERVICE", "Shows the HTTPS proxy."},
    {"-setsecurewebproxy", "SERVICE HOST PORT", "Sets the HTTPS proxy and switches it on."},
    {"-setsecurewebproxystate", "SERVICE on|off", "Switches the HTTPS proxy on or off."},
    {"-getgopherproxy", "SERVICE", "Shows the Gopher proxy."},
    {"-setgopherproxy", "SERVICE HOST PORT", "Sets the Gopher proxy and switches it on."},
    {"-setgopherproxystate", "SERVICE on|off", "Switches the Gopher proxy on or off."},
    {"-getstreamingproxy", "SERVICE", "Shows the streaming proxy."},
    {"-setstreamingproxy", "SERVICE HOST PORT", "Sets the streaming proxy and switches it on."},
    {"-setstreamingproxystate", "SERVICE on|off", "Switches the streaming proxy on or off."},
    {"-getsocksfirewallproxy", "SERVICE", "Shows the SOCKS proxy."},
    {"-setsocksfirewallproxy", "SERVICE HOST PORT", "Sets the SOCKS proxy and switches it on."},
    {"-setsocksfirewallproxystate", "SERVICE on|off", "Switches the SOCKS proxy on or off."},
    {"-getftpproxy", "SERVICE", "Shows the FTP proxy."},
    {"-setftpproxy", "SERVICE HOST PORT", "Sets the FTP proxy and switches it on."},
    {"-setftpproxystate", "SERVICE on|off", "Switches the FTP proxy on or off."},
    {"-restore", "SERVICE", "Takes back every change made to the service's settings."},
});

} // namespace velq::nettools
