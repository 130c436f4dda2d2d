#pragma once

#include "devices/DeviceData.h"

#include <QList>
#include <QString>

namespace velq
{

/// Devices cut out of the text of a tool, in the order of its lines, each pair of addresses once.
/// Lines in another form are passed over. Pure functions.

/// Of `netstat -nr`: rows whose destination is a whole address with "192.168" in it and whose
/// gateway is a neighbour's, by the tests for "127.0.0.1", "link#…" and "ff:ff:ff:ff:ff:ff".
QList<DeviceData> devicesFromRoutingTable(const QString &text);

/// Of `arp -a`: lines "NAME (ADDRESS) at HARDWARE on …" with "192.168" in them; only the nameless
/// form
/// "? (" loses its beginning.
QList<DeviceData> devicesFromAddressCache(const QString &text);

} // namespace velq
