#pragma once

#include "platform/linux/rtnetlink/Links.h"
#include "platform/linux/rtnetlink/Neighbours.h"

#include <string>
#include <string_view>

namespace velq::nettools
{

/// One line of the table of hosts, as the arp(8) of recent macOS releases prints it; the form was
/// read off the output that public documentation shows.
struct HostFields {
    std::string_view name; ///< "?" for a host without one
    std::string_view address;
    std::string_view hardwareAddress; ///< "(incomplete)" for a host that has not answered
    std::string_view interfaceName;
    bool permanent = false;
    std::string_view medium; ///< "ethernet", "bridge", "vlan", …; empty when it is not told
};

/// The medium's name; empty when arp(8) has none for it.
std::string_view mediumOf(const rtnetlink::Link &link);

void appendHostLine(std::string &out, const HostFields &fields);

} // namespace velq::nettools
