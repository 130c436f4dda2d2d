#pragma once

#include <QString>

namespace velq
{

/// One device of the local network, as the tool that listed it prints it.
struct DeviceData {
    QString ip;
    QString macAddress;

    /// Negative, zero or positive, by hardware address alone.
    int compare(const DeviceData &other) const { return macAddress.compare(other.macAddress); }

    bool operator==(const DeviceData &) const = default;
};

} // namespace velq
