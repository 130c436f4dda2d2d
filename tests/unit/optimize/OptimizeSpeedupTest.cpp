#include "support/FakeRootDaemon.h"
#include "unit/optimize/OptimizeFixture.h"

#include <unistd.h>

namespace
{

using namespace velq;

const QByteArray order = "root: sudo networksetup -ordernetworkservices Ethernet Wi-Fi";
const QByteArray routeLine =
    "route -n get www.debian.org|grep 'interface' | awk -F ': ' '{print $2}'\n";

class OptimizeSpeedupTest : public velq::testing::OptimizeTest
{
protected:
    void SetUp() override
    {
        if (geteuid() != 0)
            GTEST_SKIP() << "only root can be the root that answers";
        rootDaemon.emplace(tools);
    }

    /// Leaves only what a speed-up writes.
    QByteArray spedUp(qint64 bits)
    {
        scanner.setErrorStatus(bits);
        tools.clearLog();
        scanner.speedup();
        QByteArray lines;
        for (const QByteArray &line : tools.log().split('\n')) {
            if (line.startsWith("root: "))
                lines += line + '\n';
        }
        return lines;
    }

    /// No scan changes anything any more: the rows show what the speed-up has made of them.
    void keepRows() { scanner.stopScan(); }

    void expectRow(qsizetype index, const char *name, const char *des) const
    {
        const auto item = scanner.array().value(index);
        EXPECT_EQ(item->issue(), 0);
        ASSERT_EQ(item->errorStatus().size(), 1);
        EXPECT_FALSE(item->errorStatus()[0]->error);
        EXPECT_EQ(item->errorStatus()[0]->name, QString::fromUtf8(name));
        EXPECT_EQ(item->errorStatus()[0]->des, QString::fromUtf8(des));
    }

    std::optional<velq::testing::FakeRootDaemon> rootDaemon;
};

TEST_F(OptimizeSpeedupTest, WithoutAProblemItOnlyScans)
{
    makeEverythingWrong();
    EXPECT_EQ(spedUp(0), "");
    EXPECT_EQ(delegate.told, (QList<qint64>{1, 16, 256, 4096})) << "once, by the scan";
    EXPECT_EQ(scanner.errorStatus(), 4369);
}

TEST_F(OptimizeSpeedupTest, TheCardCacheIsFoundAgain)
{
    setFlushed({});
    EXPECT_EQ(spedUp(256), "");
    EXPECT_EQ(delegate.told, QList<qint64>{256});
    EXPECT_EQ(scanner.array()[2]->issue(), 1);
    EXPECT_FALSE(
        UserDefaults::standardUserDefaults().objectForKey(QStringLiteral("cacheDate")).isValid());
}

TEST_F(OptimizeSpeedupTest, OtherServicesComeBehindTheTwo)
{
    EXPECT_EQ(spedUp(1), order + '\n');
    addService("Wi-Fi", "wlan0");
    addService("Ethernet", "eth0");
    addService("Bluetooth PAN", "bnep0");
    addService("Thunderbolt Ethernet", "eth7");
    addService("Thunderbolt Bridge", "br0");
    addService("USB Wi-Fi 2", "wlan1");
    EXPECT_EQ(spedUp(1), order + " Bluetooth PAN Thunderbolt Bridge\n");
    keepRows();
    (void)spedUp(1);
    expectRow(0, "Good", "Your network runs at its top performance");
}

TEST_F(OptimizeSpeedupTest, AServiceIsOrderedByItsName)
{
    NetworkService service;
    service.name = QStringLiteral("LAN");
    service.netType = QStringLiteral("Ethernet");
    NetworkScanner::shareScanner().services().append(service);
    EXPECT_EQ(spedUp(1), order + " LAN\n");
}

TEST_F(OptimizeSpeedupTest, AServiceWithoutANameStandsInParentheses)
{
    NetworkScanner::shareScanner().services().append(NetworkService());
    EXPECT_EQ(spedUp(1), order + " (null)\n");
}

TEST_F(OptimizeSpeedupTest, TheMTUIsTheDevices)
{
    addService("Wi-Fi", "wlan0");
    setCurrent("wlan0");
    keepRows();
    EXPECT_EQ(spedUp(16), "root: networksetup -setMTU wlan0 1500\n");
    expectRow(1, "Good", "The MTU is set reasonably.");
}

TEST_F(OptimizeSpeedupTest, TheNameServerIsTheServices)
{
    addService("Wi-Fi", "wlan0");
    setCurrent("wlan0");
    keepRows();
    EXPECT_EQ(spedUp(4096), "root: sudo networksetup -setdnsservers Wi-Fi 8.8.8.8\n");
    expectRow(3, "Connectivity: Good", "All is good. Please enjoy smooth surfing.");
}

TEST_F(OptimizeSpeedupTest, WithoutACurrentInterfaceThePlacesAreEmptyOrAbsent)
{
    setCurrent(nullptr);
    EXPECT_EQ(spedUp(16 + 4096),
              "root: networksetup -setMTU  1500\n"
              "root: sudo networksetup -setdnsservers (null) 8.8.8.8\n");
}

TEST_F(OptimizeSpeedupTest, EverythingInItsOrderAndTheScanBehind)
{
    addService("Ethernet", "eth0");
    addService("Wi-Fi", "wlan0");
    makeEverythingWrong();
    scanner.scan();
    delegate.told.clear();
    tools.clearLog();
    scanner.speedup();
    const QByteArray log = tools.log();
    EXPECT_TRUE(log.startsWith(order + '\n' + routeLine
                               + "root: networksetup -setMTU wlan0 1500\n"
                                 "root: sudo networksetup -setdnsservers Wi-Fi 8.8.8.8\n"
                                 "networksetup -listallhardwareports"))
        << log.toStdString();
    EXPECT_EQ(log.count("ping"), 1);
    EXPECT_EQ(delegate.told, (QList<qint64>{1, 16, 256, 4096})) << "whatever root has done";
}

TEST_F(OptimizeSpeedupTest, WhatRootPrintsChangesNothing)
{
    rootDaemon->setAnswer("** Error: Unable to find item in network database.\n");
    keepRows();
    EXPECT_EQ(spedUp(1), order + '\n');
    expectRow(0, "Good", "Your network runs at its top performance");
}

TEST_F(OptimizeSpeedupTest, StoppedBeforeItDoesNothing)
{
    scanner.stopSpeedup();
    EXPECT_EQ(spedUp(4369), "");
    EXPECT_EQ(tools.log(), "") << "nor does it scan";
    EXPECT_EQ(scanner.errorStatus(), 4369);
    scanner.setStopFixFlag(false);
    EXPECT_EQ(spedUp(1), order + '\n');
}

TEST_F(OptimizeSpeedupTest, StoppedWhileTheOrderIsSetItEndsThere)
{
    keepRows();
    scanner.setErrorStatus(4369);
    rootDaemon->during(
        order, [this] { scanner.speedup(); }, [this] { scanner.stopSpeedup(); });
    EXPECT_EQ(tools.log(), order + '\n' + routeLine);
    expectRow(0, "Good", "Your network runs at its top performance");
    EXPECT_TRUE(scanner.array()[3]->errorStatus().isEmpty());
    EXPECT_EQ(scanner.errorStatus(), 4369);
}

TEST_F(OptimizeSpeedupTest, StoppedWhileTheMTUIsSetItEndsThere)
{
    scanner.setErrorStatus(16 + 256 + 4096);
    const QByteArray line = "root: networksetup -setMTU eth0 1500\n";
    rootDaemon->during(
        line, [this] { scanner.speedup(); }, [this] { scanner.stopSpeedup(); });
    EXPECT_EQ(tools.log(), routeLine + line);
    expectRow(1, "Good", "The MTU is set reasonably.");
    EXPECT_TRUE(delegate.told.isEmpty()) << "no scan";
}

// Nothing looks at the flag behind the name server.
TEST_F(OptimizeSpeedupTest, StoppedWhileTheNameServerIsSetItScans)
{
    makeEverythingWrong();
    addService("Wi-Fi", "wlan0");
    scanner.setErrorStatus(4096);
    rootDaemon->during(
        "-setdnsservers", [this] { scanner.speedup(); }, [this] { scanner.stopSpeedup(); });
    EXPECT_EQ(delegate.told, (QList<qint64>{1, 16, 256, 4096}));
}

} // namespace
