#include "nettools/wifi/ManagedWifi.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace velq::nettools
{

namespace
{

struct Security {
    int64_t flag; ///< NM_802_11_AP_SEC_KEY_MGMT_…
    std::string_view rsn;
    std::string_view wpa;
};

// The better one first: an access point may offer several.
constexpr std::array securities = std::to_array<Security>({
    {0x400, "wpa3-sae", "wpa3-sae"},
    {0x200, "wpa2", "wpa"},
    {0x100, "wpa2-psk", "wpa-psk"},
    {0x800, "owe", "owe"},
});

std::string securityOf(const Value &accessPoint)
{
    const int64_t rsn = accessPoint["RsnFlags"].number(0);
    const int64_t wpa = accessPoint["WpaFlags"].number(0);
    for (const Security &security : securities) {
        if ((rsn & security.flag) != 0)
            return std::string(security.rsn);
        if ((wpa & security.flag) != 0)
            return std::string(security.wpa);
    }
    constexpr int64_t privacy = 0x1; // NM_802_11_AP_FLAGS_PRIVACY
    return (accessPoint["Flags"].number(0) & privacy) != 0 ? "wep" : "none";
}

std::string nameOf(const Value &accessPoint)
{
    std::string name;
    std::ranges::transform(accessPoint["Ssid"].list(), std::back_inserter(name),
                           [](const Value &byte) { return static_cast<char>(byte.number(0)); });
    return name;
}

uint32_t megabits(const Value &kilobits)
{
    return static_cast<uint32_t>(kilobits.number(0) / 1000);
}

WifiNetwork networkOf(const Device &device)
{
    const Value &accessPoint = device.accessPoint;
    WifiNetwork network;
    network.name = nameOf(accessPoint);
    network.station = accessPoint["HwAddress"].text();
    // It tells of -100 to -50 dBm as of 0 to 100 percent.
    network.signal = static_cast<int>(accessPoint["Strength"].number(0) / 2 - 100);
    network.rate = device.bitrate / 1000;
    network.maxRate = megabits(accessPoint["MaxBitrate"]);
    network.frequency = static_cast<uint32_t>(accessPoint["Frequency"].number(0));
    network.security = securityOf(accessPoint);
    return network;
}

} // namespace

std::optional<WifiState> managedWifi(const State &state)
{
    std::optional<WifiState> wifi;
    for (const Device &device : state.devices) {
        if (device.type != Device::WiFi || !device.managed)
            continue;
        if (!wifi)
            wifi = WifiState{state.wireless && state.wirelessHardware, std::nullopt};
        if (device.accessPoint.isSet() && !wifi->network)
            wifi->network = networkOf(device);
    }
    return wifi;
}

} // namespace velq::nettools
