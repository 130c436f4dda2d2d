#include "nettools/networksetup/ServiceText.h"

#include "nettools/lib/Numbers.h"

#include <algorithm>

namespace velq::nettools
{

namespace
{

constexpr std::string_view heading =
    "An asterisk (*) denotes that a network service is disabled.\n";

void appendLine(std::string &out, std::string_view label, std::string_view value)
{
    out.append(label).append(": ").append(value).append("\n");
}

std::string_view orNone(const std::string &text)
{
    return text.empty() ? std::string_view("none") : text;
}

void appendInfo4(std::string &out, const ServiceInfo &info)
{
    const bool manual = info.method == ServiceInfo::Method::Manual;
    out += manual ? "Manual Configuration\n" : "DHCP Configuration\n";
    if (!info.address.empty()) {
        appendLine(out, "IP address", info.address);
        appendLine(out, "Subnet mask", netmaskText(info.prefixLength));
        appendLine(out, "Router", orNone(info.router));
    }
    if (!manual)
        appendLine(out, "Client ID", info.clientId);
}

std::string_view methodText(ServiceInfo::Method method)
{
    switch (method) {
    case ServiceInfo::Method::Manual:
        return "Manual";
    case ServiceInfo::Method::LinkLocal:
        return "Link-local only";
    case ServiceInfo::Method::Off:
        return "Off";
    case ServiceInfo::Method::Automatic:
        break;
    }
    return "Automatic";
}

void appendInfo6(std::string &out, const ServiceInfo &info)
{
    appendLine(out, "IPv6", methodText(info.method6));
    if (info.method6 == ServiceInfo::Method::Off)
        return;
    appendLine(out, "IPv6 IP address", orNone(info.address6));
    appendLine(out, "IPv6 Router", orNone(info.router6));
}

} // namespace

void appendHardwarePorts(std::string &out, const std::vector<Port> &ports)
{
    for (const Port &port : ports) {
        out += '\n';
        appendLine(out, "Hardware Port", port.name);
        appendLine(out, "Device", port.device);
        appendLine(out, "Ethernet Address",
                   port.hardwareAddress.empty() ? "N/A" : std::string_view(port.hardwareAddress));
    }
    out += "\nVLAN Configurations\n===================\n";
}

void appendServices(std::string &out, const std::vector<Service> &services)
{
    out += heading;
    for (const Service &service : services)
        out.append(service.enabled ? "" : "*").append(service.port.name).append("\n");
}

void appendServiceOrder(std::string &out, const std::vector<Service> &services)
{
    out += heading;
    unsigned place = 0;
    for (const auto &[port, enabled] : services) {
        out += '(';
        if (enabled)
            appendNumber(out, ++place);
        else
            out += '*';
        out.append(") ").append(port.name);
        out.append("\n(Hardware Port: ").append(port.name);
        out.append(", Device: ").append(port.device).append(")\n\n");
    }
}

void appendEnabled(std::string &out, bool enabled)
{
    out += enabled ? "Enabled\n" : "Disabled\n";
}

void appendInfo(std::string &out, const Port &port, const ServiceInfo &info)
{
    appendInfo4(out, info);
    appendInfo6(out, info);
    appendLine(out, port.kind == Port::Kind::Wireless ? "Wi-Fi ID" : "Ethernet Address",
               orNone(port.hardwareAddress));
}

void appendDnsServers(std::string &out, std::string_view service,
                      std::span<const std::string> servers)
{
    if (servers.empty())
        out.append("There aren't any DNS Servers set on ").append(service).append(".\n");
    for (const std::string &server : servers)
        out.append(server).append("\n");
}

void appendMtu(std::string &out, const Mtu &mtu)
{
    out += "Active MTU: ";
    appendNumber(out, mtu.active);
    out += " (Current Setting: ";
    appendNumber(out, mtu.setting != 0 ? mtu.setting : mtu.active);
    out += ")\n";
}

void appendProxy(std::string &out, const Proxy &proxy)
{
    appendLine(out, "Enabled", proxy.enabled ? "Yes" : "No");
    appendLine(out, "Server", proxy.server);
    out += "Port: ";
    appendNumber(out, proxy.port);
    out += "\nAuthenticated Proxy Enabled: ";
    out += proxy.authenticated ? "1\n" : "0\n";
}

std::string netmaskText(uint8_t prefixLength)
{
    std::string text;
    for (unsigned octet = 0; octet < 4; ++octet) {
        const unsigned set = prefixLength > octet * 8 ? std::min(prefixLength - octet * 8, 8U) : 0;
        text += octet == 0 ? "" : ".";
        appendNumber(text, 0xffU & (0xff00U >> set));
    }
    return text;
}

} // namespace velq::nettools
