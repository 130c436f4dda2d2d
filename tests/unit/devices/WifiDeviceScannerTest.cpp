#include "devices/WifiDeviceScanner.h"

#include "platform/GlobalQueue.h"
#include "platform/UserNotificationCenter.h"
#include "support/FakeTool.h"
#include "support/Waiting.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>
#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::FakeTools;
using velq::testing::settle;
using velq::testing::waitUntil;

struct RecordingCenter : UserNotificationCenter {
    void deliver(const UserNotification &notification) override
    {
        EXPECT_EQ(QThread::currentThread(), QCoreApplication::instance()->thread());
        delivered.append(notification);
    }
    QList<UserNotification> delivered;
};

DeviceData device(const char *ip, const char *macAddress)
{
    return {QString::fromLatin1(ip), QString::fromLatin1(macAddress)};
}

class WifiDeviceScannerTest : public ::testing::Test
{
protected:
    // One pass over a table in which each host is "LAST-OCTET HARDWARE-ADDRESS".
    void pass(const QList<QByteArray> &hosts)
    {
        QByteArray table = "Routing tables\n\nInternet:\n";
        for (const QByteArray &host : hosts)
            table += "192.168.1." + host + " UHLWI en0\n";
        tools.addPrinting(QStringLiteral("netstat"), table);
        passAsItIs();
    }

    void passAsItIs()
    {
        scanner->updateDevices();
        ASSERT_TRUE(waitUntil([] { return GlobalQueue::isIdle(); }));
        settle();
    }

    QStringList announced() const
    {
        QStringList texts;
        for (const UserNotification &notification : center.delivered)
            texts.append(notification.informativeText);
        return texts;
    }

    FakeTools tools;
    RecordingCenter center;
    std::shared_ptr<WifiDeviceScanner> scanner = WifiDeviceScanner::create(center);
};

TEST_F(WifiDeviceScannerTest, TheFirstPassIsTheBaseline)
{
    EXPECT_FALSE(scanner->devices().has_value());
    pass({"1 a:1", "2 a:2", "3 a:3", "4 a:4", "5 a:5"});
    EXPECT_TRUE(announced().isEmpty());
    ASSERT_TRUE(scanner->devices().has_value());
    EXPECT_EQ(scanner->devices()->size(), 5);
    EXPECT_EQ(tools.log(), "netstat -nr\n");
}

TEST_F(WifiDeviceScannerTest, ANewHardwareAddressIsAnnouncedOnce)
{
    pass({"1 a:1"});
    pass({"1 a:1", "7 aa:bb:cc:dd:ee:ff"});
    ASSERT_EQ(center.delivered.size(), 1);
    EXPECT_EQ(center.delivered[0].title, QStringLiteral("New device add"));
    EXPECT_EQ(center.delivered[0].informativeText,
              QStringLiteral("ip: 192.168.1.7\nMac address: aa:bb:cc:dd:ee:ff"));
    pass({"1 a:1", "7 aa:bb:cc:dd:ee:ff"});
    EXPECT_EQ(center.delivered.size(), 1);
}

TEST_F(WifiDeviceScannerTest, SeveralAreAnnouncedInTheTablesOrder)
{
    pass({});
    pass({"9 a:9", "3 a:3"});
    EXPECT_EQ(announced(),
              (QStringList{QStringLiteral("ip: 192.168.1.9\nMac address: a:9"),
                           QStringLiteral("ip: 192.168.1.3\nMac address: a:3")}));
}

TEST_F(WifiDeviceScannerTest, AKnownHardwareAddressMayMove)
{
    pass({"1 a:1"});
    pass({"200 a:1"});
    EXPECT_TRUE(announced().isEmpty());
    EXPECT_EQ(scanner->devices()->first().ip, QStringLiteral("192.168.1.1"));
}

TEST_F(WifiDeviceScannerTest, APassWithoutNewsKeepsThoseWhoLeft)
{
    pass({"1 a:1", "2 a:2"});
    pass({"1 a:1"});
    EXPECT_EQ(scanner->devices()->size(), 2);
    pass({"1 a:1", "2 a:2"});
    EXPECT_TRUE(announced().isEmpty());
}

TEST_F(WifiDeviceScannerTest, APassWithNewsForgetsThoseWhoLeft)
{
    pass({"1 a:1", "2 a:2"});
    pass({"1 a:1", "3 a:3"});
    EXPECT_EQ(scanner->devices(),
              (QList{device("192.168.1.1", "a:1"), device("192.168.1.3", "a:3")}));
    pass({"1 a:1", "2 a:2", "3 a:3"});
    EXPECT_EQ(announced().last(), QStringLiteral("ip: 192.168.1.2\nMac address: a:2"));
    EXPECT_EQ(announced().size(), 2);
}

TEST_F(WifiDeviceScannerTest, AnEmptyFirstPassIsABaselineToo)
{
    pass({});
    ASSERT_TRUE(scanner->devices().has_value());
    EXPECT_TRUE(scanner->devices()->isEmpty());
    pass({"1 a:1"});
    EXPECT_EQ(announced().size(), 1);
}

TEST_F(WifiDeviceScannerTest, AToolThatFailsOrPrintsNonsenseIsAnEmptyList)
{
    tools.add(QStringLiteral("netstat"), "printf '192.168.1.1 a:1 \\377\\n'");
    EXPECT_TRUE(scanner->allDevices_new().isEmpty());
    tools.add(QStringLiteral("netstat"), "exit 1");
    EXPECT_TRUE(scanner->allDevices_new().isEmpty());
    tools.add(QStringLiteral("netstat"), "echo 192.168.1.1 a:1; exit 1");
    EXPECT_EQ(scanner->allDevices_new().size(), 1);
}

TEST_F(WifiDeviceScannerTest, AMissingToolIsAnEmptyList)
{
    qputenv("PATH", "/nonexistent");
    EXPECT_TRUE(scanner->allDevices_new().isEmpty());
}

TEST_F(WifiDeviceScannerTest, ATableLargerThanThePipeIsReadWhole)
{
    tools.add(
        QStringLiteral("netstat"),
        "i=0; while [ $i -lt 5000 ]; do i=$((i+1)); "
        "echo \"192.168.$((i/250)).$((i%250))  aa:bb:cc:dd:$((i/250)):$((i%250)) UHLWIi\"; done");
    EXPECT_EQ(scanner->allDevices_new().size(), 5000);
}

TEST_F(WifiDeviceScannerTest, TheOlderMethodAsksTheAddressCache)
{
    tools.addPrinting(QStringLiteral("arp"), "? (192.168.1.1) at a:b:c:d:e:f on en0\n");
    EXPECT_EQ(scanner->allDevices(), QList{device("192.168.1.1", "a:b:c:d:e:f")});
    EXPECT_EQ(tools.log(), "arp -a\n");
}

TEST_F(WifiDeviceScannerTest, ComparingLooksAtHardwareAddressesAlone)
{
    const QList known{device("192.168.1.1", "a:1")};
    EXPECT_TRUE(WifiDeviceScanner::compareDevices(known, {}).isEmpty());
    EXPECT_TRUE(WifiDeviceScanner::compareDevices(known, {device("192.168.1.9", "a:1")}).isEmpty());
    EXPECT_EQ(WifiDeviceScanner::compareDevices(known, {device("192.168.1.1", "A:1")}).size(), 1);
    const QList twice{device("192.168.1.2", "b"), device("192.168.1.3", "b")};
    EXPECT_EQ(WifiDeviceScanner::compareDevices({}, twice), twice);
}

TEST_F(WifiDeviceScannerTest, AnAbsentAddressShowsAsNull)
{
    scanner->sendNotification({});
    EXPECT_EQ(announced(), QStringList{QStringLiteral("ip: (null)\nMac address: (null)")});
}

TEST_F(WifiDeviceScannerTest, StartingTwiceMakesOneTimerOfTwentySeconds)
{
    EXPECT_TRUE(scanner->timer().isNull());
    scanner->monitor();
    const auto timer = scanner->timer();
    ASSERT_FALSE(timer.isNull());
    EXPECT_EQ(timer->interval(), 20000);
    scanner->monitor();
    EXPECT_EQ(scanner->timer(), timer);
    EXPECT_EQ(scanner->findChildren<RunLoopTimer *>().size(), 1);
}

TEST_F(WifiDeviceScannerTest, StoppingKeepsTheKnownDevices)
{
    pass({"1 a:1"});
    scanner->monitor();
    const auto timer = scanner->timer();
    scanner->stopMonitor();
    EXPECT_TRUE(scanner->timer().isNull());
    settle();
    EXPECT_TRUE(timer.isNull());
    EXPECT_EQ(scanner->devices()->size(), 1);
    scanner->stopMonitor();

    scanner->monitor();
    pass({"1 a:1", "2 a:2"});
    EXPECT_EQ(announced().size(), 1);
}

TEST_F(WifiDeviceScannerTest, WhatIsSetCountsAsItsOwn)
{
    QObject owner;
    const auto timer = RunLoopTimer::scheduled(std::chrono::hours(1), &owner, [] {});
    scanner->setTimer(timer);
    scanner->monitor();
    EXPECT_EQ(scanner->timer(), timer);
    scanner->stopMonitor();
    EXPECT_FALSE(timer->isActive());

    scanner->setDevices(QList{device("192.168.1.1", "a:1")});
    pass({"1 a:1", "2 a:2"});
    EXPECT_EQ(announced(), QStringList{QStringLiteral("ip: 192.168.1.2\nMac address: a:2")});
}

TEST_F(WifiDeviceScannerTest, TheTimerRunsAPass)
{
    tools.addPrinting(QStringLiteral("netstat"), "192.168.1.1 a:1 U\n");
    scanner->monitor();
    ASSERT_TRUE(QMetaObject::invokeMethod(scanner->timer(), "timeout", Qt::DirectConnection));
    EXPECT_TRUE(waitUntil([&] { return scanner->devices().has_value(); }));
}

TEST_F(WifiDeviceScannerTest, APassUnderWayCompletesAfterAStopAndKeepsTheScanner)
{
    tools.add(QStringLiteral("netstat"),
              R"(mkfifo "$(dirname "$0")/gate"; cat "$(dirname "$0")/gate")");
    scanner->updateDevices();
    scanner->stopMonitor();
    const std::weak_ptr<WifiDeviceScanner> held = scanner;
    const QPointer<WifiDeviceScanner> alive = scanner.get();
    scanner.reset();
    EXPECT_FALSE(held.expired());
    const QString gate = tools.path(QStringLiteral("gate"));
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(gate); }));
    QFile opened(gate);
    ASSERT_TRUE(opened.open(QIODevice::WriteOnly));
    opened.close();
    EXPECT_TRUE(waitUntil([&] { return alive.isNull(); }));
}

// Passes are not serialised: each reads and replaces the list whole.
TEST_F(WifiDeviceScannerTest, PassesSideBySideLeaveAWholeList)
{
    tools.addPrinting(QStringLiteral("netstat"), "192.168.1.1 a:1 U\n192.168.1.2 a:2 U\n");
    for (int i = 0; i < 20; ++i)
        scanner->updateDevices();
    ASSERT_TRUE(waitUntil([] { return GlobalQueue::isIdle(); }));
    settle();
    EXPECT_EQ(scanner->devices()->size(), 2);
    EXPECT_TRUE(announced().isEmpty());
}

} // namespace
