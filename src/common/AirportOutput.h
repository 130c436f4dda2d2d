#pragma once

#include <QString>

namespace velq
{

/// What the tool airport says of Wi-Fi. No other value is ever produced.
enum WifiState : int {
    WifiOff = 0,
    WifiOn = 1,     ///< switched on without a network; also when the tool says nothing
    WifiJoined = 2, ///< in a network
};

/// Reads the output of `airport -I`: lines of a key, a colon, a blank and a value. A later line
/// goes before an earlier one with the same key.
WifiState wifiStateFrom(const QString &output);

} // namespace velq
