#include "devices/WifiDeviceScanner.h"

#include "common/Text.h"
#include "devices/DeviceList.h"
#include "platform/GlobalQueue.h"
#include "platform/MainQueue.h"
#include "platform/ToolPath.h"
#include "platform/UserNotificationCenter.h"
#include "shell/process/ChildProcess.h"

#include <QSet>
#include <QThread>

namespace velq
{

namespace
{

using namespace std::chrono_literals;

// Read while it runs: a table larger than the pipe must not keep the tool from ending.
QString outputOf(const QString &launchPath, const std::string &argument)
{
    try {
        process::ChildProcess tool(ToolPath::resolved(launchPath).toStdString(), {argument});
        const std::string output = tool.readToEnd();
        tool.waitUntilExit();
        return decodedUtf8(output);
    } catch (const process::LaunchError &) {
        return {};
    }
}

// The last holder may be a pass on another thread, and a timer may only be destroyed on its own.
void destroyOnItsThread(WifiDeviceScanner *scanner)
{
    if (scanner->thread() == QThread::currentThread())
        delete scanner;
    else
        MainQueue::async([scanner] { delete scanner; });
}

} // namespace

std::shared_ptr<WifiDeviceScanner> WifiDeviceScanner::create(UserNotificationCenter &notifications)
{
    return {new WifiDeviceScanner(notifications), destroyOnItsThread};
}

WifiDeviceScanner::WifiDeviceScanner(UserNotificationCenter &notifications)
    : m_notifications(notifications)
{
}

void WifiDeviceScanner::monitor()
{
    if (m_timer.isNull())
        m_timer = RunLoopTimer::scheduled(20s, this, [this] { updateDevices(); });
}

void WifiDeviceScanner::stopMonitor()
{
    RunLoopTimer::invalidate(m_timer);
    m_timer.clear();
}

void WifiDeviceScanner::updateDevices()
{
    GlobalQueue::async([self = shared_from_this()] { self->pass(); });
}

void WifiDeviceScanner::pass()
{
    const QList<DeviceData> fresh = allDevices_new();
    const Devices known = devices();
    if (!known) {
        setDevices(fresh);
        return;
    }
    const QList<DeviceData> added = compareDevices(*known, fresh);
    if (added.isEmpty())
        return;
    setDevices(fresh);
    MainQueue::async([self = shared_from_this(), added] {
        for (const DeviceData &device : added)
            self->sendNotification(device);
    });
}

QList<DeviceData> WifiDeviceScanner::allDevices_new() const
{
    return devicesFromRoutingTable(outputOf(QStringLiteral("/usr/sbin/netstat"), "-nr"));
}

QList<DeviceData> WifiDeviceScanner::allDevices() const
{
    return devicesFromAddressCache(outputOf(QStringLiteral("/usr/sbin/arp"), "-a"));
}

QList<DeviceData> WifiDeviceScanner::compareDevices(const QList<DeviceData> &ar1,
                                                    const QList<DeviceData> &ar2)
{
    QSet<QString> known;
    for (const DeviceData &device : ar1)
        known.insert(device.macAddress);
    QList<DeviceData> added;
    for (const DeviceData &device : ar2) {
        if (!known.contains(device.macAddress))
            added.append(device);
    }
    return added;
}

void WifiDeviceScanner::sendNotification(const DeviceData &device)
{
    m_notifications.deliver({QStringLiteral("New device add"),
                             QStringLiteral("ip: %1\nMac address: %2")
                                 .arg(shown(device.ip), shown(device.macAddress))});
}

WifiDeviceScanner::Devices WifiDeviceScanner::devices() const
{
    return m_devices.load();
}

void WifiDeviceScanner::setDevices(const Devices &devices)
{
    m_devices.store(devices);
}

QPointer<RunLoopTimer> WifiDeviceScanner::timer() const
{
    return m_timer;
}

void WifiDeviceScanner::setTimer(const QPointer<RunLoopTimer> &timer)
{
    m_timer = timer;
}

} // namespace velq
