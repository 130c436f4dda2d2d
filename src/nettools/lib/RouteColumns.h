#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace velq::nettools
{

/// The columns of the routing table, laid out as by the netstat(1) of recent macOS releases; widths
/// and blanks were read off the output that public documentation shows. A text that is too long for
/// its column pushes the others aside and is not cut: half an address is another address.

struct RouteFields {
    std::string_view destination;
    std::string_view gateway;
    std::string_view flags;
    std::string_view interfaceName;
    std::string_view expire;
};

/// "Internet:" or "Internet6:" and the names of the columns. `family` is AF_INET or AF_INET6.
void appendHeading(std::string &out, uint8_t family);
void appendRow(std::string &out, uint8_t family, const RouteFields &fields);

} // namespace velq::nettools
