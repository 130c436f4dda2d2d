#pragma once

#include "common/Atomic.h"
#include "common/RunLoopTimer.h"
#include "devices/DeviceData.h"

#include <QList>
#include <QObject>

#include <memory>
#include <optional>

namespace velq
{

class UserNotificationCenter;

/// Keeps watch over the devices of the local network and announces those that join.
///
/// Belongs to the main thread, where its timer runs and its notifications are sent. Each pass runs
/// as a task on the global queue and keeps the scanner alive until it ends; passes are not
/// serialised.
class WifiDeviceScanner : public QObject, public std::enable_shared_from_this<WifiDeviceScanner>
{
    Q_OBJECT

public:
    /// Absent until the first pass has ended; an empty list is a baseline like any other.
    using Devices = std::optional<QList<DeviceData>>;

    /// `notifications` must outlive the scanner.
    static std::shared_ptr<WifiDeviceScanner> create(UserNotificationCenter &notifications);

    /// Starts the watch unless it runs: a pass every 20 seconds, the first one in 20 seconds.
    void monitor();
    /// Ends it. The known devices are kept; a pass under way completes.
    void stopMonitor();

    /// One pass. Returns at once.
    void updateDevices();

    /// The devices in the routing table, in the tool's order, each pair of addresses once. Blocks
    /// while the tool runs; any thread. Empty when the tool is missing or prints something else.
    QList<DeviceData> allDevices_new() const;
    /// The same from the address-resolution cache, with fewer filters: entries without a hardware
    /// address are kept, and hosts with a name have it in their `ip`.
    QList<DeviceData> allDevices() const;

    /// The devices of `ar2` whose hardware address no device of `ar1` has, in order.
    static QList<DeviceData> compareDevices(const QList<DeviceData> &ar1,
                                            const QList<DeviceData> &ar2);

    /// Shows one notification about this device.
    void sendNotification(const DeviceData &device);

    /// Any thread.
    Devices devices() const;
    void setDevices(const Devices &devices);

    /// Null while the watch is stopped.
    QPointer<RunLoopTimer> timer() const;
    void setTimer(const QPointer<RunLoopTimer> &timer);

private:
    explicit WifiDeviceScanner(UserNotificationCenter &notifications);
    void pass();

    UserNotificationCenter &m_notifications;
    Atomic<Devices> m_devices;
    QPointer<RunLoopTimer> m_timer;
};

} // namespace velq
