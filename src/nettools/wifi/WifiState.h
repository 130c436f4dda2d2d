#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace velq::nettools
{

/// The network that a radio is in.
struct WifiNetwork {
    std::string name;       ///< as it is sent: any bytes, or none when it hides its name
    std::string station;    ///< the access point's hardware address; empty when unknown
    int signal = 0;         ///< in dBm
    uint32_t rate = 0;      ///< in megabits a second; 0 when unknown, as are the next two
    uint32_t maxRate = 0;   ///< what the access point can do
    uint32_t frequency = 0; ///< in MHz
    std::string security;   ///< "wpa2-psk"; empty when unknown
};

struct WifiState {
    bool on = true; ///< the radio
    std::optional<WifiNetwork> network;
};

} // namespace velq::nettools
