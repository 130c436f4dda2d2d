#pragma once

#include "nettools/networksetup/Port.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace velq::nettools
{

/// How networksetup(8) says things; the rules were read off the output that public documentation of
/// that tool shows.

/// A port that has settings of its own.
struct Service {
    Port port;
    bool enabled = false;
};

struct ServiceInfo {
    enum class Method { Automatic, Manual, LinkLocal, Off };

    Method method = Method::Automatic;
    std::string address; ///< of IPv4; empty when there is none
    uint8_t prefixLength = 0;
    std::string router;
    std::string clientId; ///< sent with requests for a lease; empty for the usual one
    Method method6 = Method::Automatic;
    std::string address6;
    std::string router6;
};

struct Mtu {
    uint32_t active = 0;
    uint32_t setting = 0; ///< 0: what the device comes with
};

struct Proxy {
    bool enabled = false;
    std::string server; ///< kept while it is switched off
    uint16_t port = 0;
    bool authenticated = false;
};

void appendHardwarePorts(std::string &out, const std::vector<Port> &ports);
/// A heading, then the names; disabled ones have an asterisk in front.
void appendServices(std::string &out, const std::vector<Service> &services);
/// The same with the port and device of each, numbered without the disabled ones.
void appendServiceOrder(std::string &out, const std::vector<Service> &services);
void appendEnabled(std::string &out, bool enabled);
void appendInfo(std::string &out, const Port &port, const ServiceInfo &info);
/// One a line; a sentence when there are none.
void appendDnsServers(std::string &out, std::string_view service,
                      std::span<const std::string> servers);
void appendMtu(std::string &out, const Mtu &mtu);
void appendProxy(std::string &out, const Proxy &proxy);

/// "255.255.255.0" for 24. No prefix is longer than 32.
std::string netmaskText(uint8_t prefixLength);

} // namespace velq::nettools
