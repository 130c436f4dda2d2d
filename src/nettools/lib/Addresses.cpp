#include "nettools/lib/Addresses.h"

#include "nettools/lib/Numbers.h"

#include <sys/socket.h>

namespace velq::nettools
{

namespace
{

void appendOctets(std::string &out, std::span<const uint8_t> octets)
{
    for (size_t i = 0; i < octets.size(); ++i) {
        if (i != 0)
            out += '.';
        appendNumber(out, octets[i]);
    }
}

size_t octetsOfClass(uint8_t first)
{
    if (first < 128)
        return 1;
    return first < 192 ? 2 : 3;
}

void appendPrefix(std::string &out, uint8_t prefixLength)
{
    out += '/';
    appendNumber(out, prefixLength);
}

void appendNetwork4(std::string &out, std::span<const uint8_t, 4> octets, uint8_t prefixLength)
{
    const size_t natural = octetsOfClass(octets[0]);
    size_t shown = octets.size();
    while (shown > natural && octets[shown - 1] == 0)
        --shown;
    appendOctets(out, octets.first(shown));
    if (prefixLength != natural * 8)
        appendPrefix(out, prefixLength);
}

} // namespace

void appendHardwareAddress(std::string &out, std::span<const uint8_t> address)
{
    for (size_t i = 0; i < address.size(); ++i) {
        if (i != 0)
            out += ':';
        appendNumber(out, address[i], 16);
    }
}

void appendAddress(std::string &out, const rtnetlink::Address &address, std::string_view zone)
{
    if (address.family == AF_INET)
        appendOctets(out, std::span(address.bytes).first<4>());
    else
        out += address.text();
    if (!zone.empty())
        out.append("%").append(zone);
}

void appendNetwork(std::string &out, const rtnetlink::Address &address, uint8_t prefixLength,
                   std::string_view zone)
{
    if (!address.isSet()) {
        out += "default";
    } else if (address.family == AF_INET) {
        appendNetwork4(out, std::span(address.bytes).first<4>(), prefixLength);
    } else {
        appendAddress(out, address, zone);
        appendPrefix(out, prefixLength);
    }
}

bool isLinkScoped(const rtnetlink::Address &address)
{
    if (address.family != AF_INET6)
        return false;
    const auto &bytes = address.bytes;
    const int scope = bytes[1] & 0x0f;
    const bool linkLocal = bytes[0] == 0xfe && (bytes[1] & 0xc0) == 0x80;
    return linkLocal || (bytes[0] == 0xff && (scope == 1 || scope == 2));
}

bool isMulticast(const rtnetlink::Address &address)
{
    if (address.family == AF_INET)
        return (address.bytes[0] & 0xf0) == 0xe0;
    return address.family == AF_INET6 && address.bytes[0] == 0xff;
}

} // namespace velq::nettools
