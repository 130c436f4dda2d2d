#include "nettools/wifi/WifiText.h"

#include <algorithm>
#include <cctype>

namespace velq::nettools
{

namespace
{

void appendLine(std::string &out, std::string_view key, std::string_view value)
{
    constexpr size_t width = 15;
    out.append(width - std::min(width, key.size()), ' ').append(key).append(": ");
    out.append(value).append("\n");
}

void appendNumber(std::string &out, std::string_view key, uint32_t number)
{
    if (number != 0)
        appendLine(out, key, std::to_string(number));
}

std::string printable(std::string name)
{
    std::ranges::replace_if(
        name,
        [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte < 0x20 || byte == 0x7f;
        },
        '?');
    return name;
}

// Octets lose their leading zeros.
std::string shortAddress(const std::string &address)
{
    std::string text;
    for (size_t at = 0; at < address.size(); ++at) {
        const bool first = at == 0 || address[at - 1] == ':';
        const bool alone = at + 1 == address.size() || address[at + 1] == ':';
        if (!first || alone || address[at] != '0')
            text += static_cast<char>(std::tolower(static_cast<unsigned char>(address[at])));
    }
    return text;
}

// 2.4, 5 and 6 GHz count anew, and the first has one channel apart.
uint32_t channelOf(uint32_t frequency)
{
    if (frequency == 2484)
        return 14;
    if (frequency >= 5955)
        return (frequency - 5950) / 5;
    if (frequency >= 5000)
        return (frequency - 5000) / 5;
    return frequency >= 2412 ? (frequency - 2407) / 5 : 0;
}

void appendNetwork(std::string &out, const WifiNetwork &network)
{
    appendLine(out, "agrCtlRSSI", std::to_string(network.signal));
    appendLine(out, "state", "running");
    appendLine(out, "op mode", "station");
    appendNumber(out, "lastTxRate", network.rate);
    appendNumber(out, "maxRate", network.maxRate);
    if (!network.security.empty())
        appendLine(out, "link auth", network.security);
    if (!network.station.empty())
        appendLine(out, "BSSID", shortAddress(network.station));
    appendLine(out, "SSID", printable(network.name));
    appendNumber(out, "channel", channelOf(network.frequency));
}

} // namespace

void appendWifi(std::string &out, const WifiState &wifi)
{
    if (!wifi.on) {
        out += "AirPort: Off\n";
    } else if (wifi.network) {
        appendNetwork(out, *wifi.network);
    } else {
        appendLine(out, "agrCtlRSSI", "0");
        appendLine(out, "state", "init");
    }
}

} // namespace velq::nettools
