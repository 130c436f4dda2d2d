#pragma once

#include "platform/linux/rtnetlink/Address.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace velq::nettools
{

/// How addresses are spelled in the tables of BSD systems. The rules were read off the output that
/// public documentation of netstat(1) and arp(8) shows.

/// "0:1b:c:d:e:f": every octet in hexadecimal without a leading zero.
void appendHardwareAddress(std::string &out, std::span<const uint8_t> address);

/// An address in numbers. `zone` is the name of its link, appended as "%zone" unless empty.
void appendAddress(std::string &out, const rtnetlink::Address &address, std::string_view zone);

/// A destination with a prefix: "default" for an unset address, else the network's number.
///
/// IPv4 leaves out the trailing zero octets, though never more than the old classes allow (one
/// octet stays for an address below 128, two below 192, three above), and tells the prefix only
/// where it is not the one of the class: "10", "10.1/16", "10.8/24", "169.254", "192.168.0/16",
/// "224.0.0/4", "192.168.1.5/32". IPv6 always tells it: "fe80::%en0/64".
void appendNetwork(std::string &out, const rtnetlink::Address &address, uint8_t prefixLength,
                   std::string_view zone);

/// Whether the address means nothing without its link.
bool isLinkScoped(const rtnetlink::Address &address);
bool isMulticast(const rtnetlink::Address &address);

} // namespace velq::nettools
