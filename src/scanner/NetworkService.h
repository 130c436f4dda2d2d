#pragma once

#include <QString>

namespace velq
{

/// A hardware port of the computer and the network service on it. Null texts stand for what is not
/// known.
struct NetworkService {
    QString netType; ///< the port's name as the system lists it, and what commands call the service
    QString ipAdds;  ///< IPv4
    QString name;    ///< the same as netType
    QString interface; ///< the device's name
    QString macAdds;
    bool enabled = false;  ///< switched on in the system's preferences
    bool isActive = false; ///< its link carries

    bool operator==(const NetworkService &) const = default;
};

} // namespace velq
