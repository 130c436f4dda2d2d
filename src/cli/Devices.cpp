#include "cli/Devices.h"

#include "cli/Columns.h"
#include "cli/Json.h"
#include "devices/WifiDeviceScanner.h"
#include "platform/UserNotificationCenter.h"

#include <QJsonArray>
#include <QJsonObject>

namespace velq::cli
{

namespace
{

// The watch is never started, so there is nothing to notify of.
class NoNotifications : public UserNotificationCenter
{
public:
    void deliver(const UserNotification &) override { }
};

} // namespace

Report devices()
{
    QList<QStringList> rows{{QStringLiteral("IP ADDRESS"), QStringLiteral("HARDWARE ADDRESS")}};
    QJsonArray records;
    NoNotifications notifications;
    for (const DeviceData &device : WifiDeviceScanner::create(notifications)->allDevices_new()) {
        rows.append({device.ip, device.macAddress});
        records.append(QJsonObject{{QStringLiteral("ip"), jsonOf(device.ip)},
                                   {QStringLiteral("macAddress"), jsonOf(device.macAddress)}});
    }
    const QString text = records.isEmpty()
        ? QStringLiteral("No devices of the local network are known yet.\n")
        : columns(rows);
    return {text, QJsonDocument(records)};
}

} // namespace velq::cli
