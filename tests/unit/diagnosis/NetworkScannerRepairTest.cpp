#include "support/FakeRootDaemon.h"
#include "unit/diagnosis/DiagnosisFixture.h"

#include <QElapsedTimer>
#include <QFile>

#include <thread>

namespace
{

using namespace velq;
using velq::testing::asRoot;
using velq::testing::FakeRootDaemon;
using velq::testing::RecordingDelegate;
using velq::testing::RecordingHost;
using velq::testing::routerAlert;
using velq::testing::waitUntil;

// Waits for nothing, and remembers how long it would have.
class HastyScanner : public NetworkScanner
{
public:
    QList<qint64> &slept() const { return m_slept; }

protected:
    void sleepFor(std::chrono::seconds duration) const override
    {
        m_slept.append(duration.count());
    }

private:
    mutable QList<qint64> m_slept;
};

const QByteArray link = "networksetup -setnetworkserviceenabled Ethernet on";
const QByteArray wifiLink = "networksetup -setnetworkserviceenabled Wi-Fi on";
const QByteArray servers =
    " 8.8.8.8 8.8.4.4 208.67.222.222 208.67.220.220 4.2.2.1 4.2.2.2 4.2.2.3 4.2.2.4 4.2.2.5 "
    "4.2.2.6 65.32.1.65 65.32.1.70 68.94.156.1 68.94.157.1 208.180.42.100 66.76.175.100";
const QStringList proxyAlert{
    QStringLiteral("You need to close\u00a0proxy first, if you want to repair this problem."),
    QStringLiteral("You can turn on proxy server again when you need."),
    QStringLiteral("Close proxy to finish the repair"), QStringLiteral("Ignore proxy settings")};

// The look-ups by device know the shared scanner's services, so both scanners have the same.
class RepairTest : public velq::testing::DiagnosisTest
{
protected:
    void SetUp() override
    {
        if (geteuid() != 0)
            GTEST_SKIP() << "only root can be the root that answers";
        computer.install(tools);
        know({service(QStringLiteral("Ethernet"), QStringLiteral("lo"))});
        scanner.setDelegate(&delegate);
        scanner.setHost(&host);
    }

    void know(const QList<NetworkService> &services)
    {
        shared.setServices(services);
        scanner.setServices(services);
    }

    // With the line up in the end, which spares it the second scan.
    void repair(qint64 problems)
    {
        tools.addLogging(QStringLiteral("route"), "printf '  interface: lo\\n'");
        net_connect = true;
        scanner.setErrorStatus(problems);
        scanner.speedup();
    }

    QByteArrayList asked() const
    {
        QByteArrayList lines;
        for (const QByteArray &line : tools.log().split('\n')) {
            if (line.startsWith("root: "))
                lines.append(line + '\n');
        }
        return lines;
    }

    static QByteArrayList logged(QByteArrayList commandLines)
    {
        for (QByteArray &each : commandLines)
            each = asRoot(each);
        return commandLines;
    }

    RecordingDelegate delegate;
    RecordingHost host;
    HastyScanner scanner;
    FakeRootDaemon root{tools};
};

TEST_F(RepairTest, NothingFoundIsNothingDoneButTheWait)
{
    repair(0);
    EXPECT_EQ(tools.log(), "");
    EXPECT_EQ(scanner.slept(), QList<qint64>{8});
    EXPECT_TRUE(host.alerts.isEmpty());
}

TEST_F(RepairTest, TheRouterHasNoRepair)
{
    repair(NetworkScanner::RouterProblem);
    EXPECT_EQ(tools.log(), "");
}

TEST_F(RepairTest, TheLinkIsTheTwoServices)
{
    repair(1);
    EXPECT_EQ(tools.log(), asRoot(link) + asRoot(wifiLink));
}

TEST_F(RepairTest, TheAddressIsRenewedOnTheCurrentService)
{
    repair(16);
    EXPECT_EQ(tools.log(),
              "route -n get www.debian.org|grep 'interface' | awk -F ': ' '{print $2}'\n"
                  + asRoot("networksetup -setdhcp Ethernet"));
}

TEST_F(RepairTest, TheAddressIsRenewedWithoutAServiceToo)
{
    know({});
    repair(16);
    tools.addPrinting(QStringLiteral("route"), "");
    scanner.speedup();
    EXPECT_EQ(asked(), logged({"networksetup -setdhcp (null)", "networksetup -setdhcp (null)"}));
}

TEST_F(RepairTest, TheNameServersAreAllSixteen)
{
    repair(256);
    EXPECT_EQ(tools.log(),
              "route -n get www.debian.org|grep 'interface' | awk -F ': ' '{print $2}'\n"
                  + asRoot("networksetup -setdnsservers Ethernet" + servers));
}

TEST_F(RepairTest, TheNameServersOfADeviceWithoutAService)
{
    know({service(QStringLiteral("Ethernet"), QStringLiteral("other0"))});
    repair(256);
    EXPECT_EQ(asked(), logged({"networksetup -setdnsservers (null)" + servers}));
}

TEST_F(RepairTest, WithoutADeviceTheNameServersStay)
{
    know({});
    tools.addPrinting(QStringLiteral("route"), "");
    net_connect = true;
    scanner.setErrorStatus(256);
    scanner.speedup();
    EXPECT_TRUE(asked().isEmpty());
    EXPECT_EQ(scanner.slept(), QList<qint64>{8});
}

TEST_F(RepairTest, ProxiesAreClosedOnTheFirstButton)
{
    scanner.setProxies(proxiesOf({QStringLiteral("HTTP"), QStringLiteral("FTP")}));
    repair(4096);
    EXPECT_EQ(host.alerts, QList<QStringList>{proxyAlert});
    EXPECT_EQ(asked(),
              logged({"networksetup -setwebproxystate Ethernet off",
                      "networksetup -setftpproxystate Ethernet off"}));
    EXPECT_FALSE(UserDefaults::standardUserDefaults().boolForKey(QStringLiteral("NetworkKey4")));
}

TEST_F(RepairTest, ProxiesAreIgnoredOnTheOther)
{
    scanner.setProxies(proxiesOf({QStringLiteral("HTTP")}));
    NetData &item = *scanner.array()[3];
    item.setIssue(1);
    item.addStatus(std::make_shared<NetStatus>());
    host.answer = NSAlert_Addition::cancelTag + 1;
    repair(4096);
    EXPECT_TRUE(asked().isEmpty());
    EXPECT_TRUE(UserDefaults::standardUserDefaults().boolForKey(QStringLiteral("NetworkKey4")));
    EXPECT_TRUE(item.hasIgnore());
    EXPECT_EQ(item.issue(), 0);
    EXPECT_EQ(item.GerenalData::issue(), 0);
    ASSERT_EQ(item.errorStatus().size(), 1);
    const NetStatus &status = *item.errorStatus().first();
    EXPECT_FALSE(status.error);
    EXPECT_EQ(status.name.toUtf8(), "代理服务器正常.");
    EXPECT_TRUE(status.des.isNull());
}

TEST_F(RepairTest, AnyButTheFirstButtonIgnores)
{
    host.answer = NSAlert_Addition::cancelTag + 2;
    repair(4096);
    EXPECT_TRUE(UserDefaults::standardUserDefaults().boolForKey(QStringLiteral("NetworkKey4")));
}

TEST_F(RepairTest, IgnoringTwiceIsStillIgnoring)
{
    host.answer = NSAlert_Addition::cancelTag + 1;
    repair(4096);
    repair(4096);
    EXPECT_TRUE(UserDefaults::standardUserDefaults().boolForKey(QStringLiteral("NetworkKey4")));
}

// That is what the test's sense comes to.
TEST_F(RepairTest, IgnoredProxiesAreTheNextScansProblem)
{
    host.answer = NSAlert_Addition::cancelTag + 1;
    repair(4096);
    computer.proxies = " webproxy ";
    computer.install(tools);
    scanner.scan();
    EXPECT_EQ(delegate.told, QList<qint64>{4096});
}

TEST_F(RepairTest, AnUnansweredQuestionLeavesTheProxiesAlone)
{
    scanner.setProxies(proxiesOf({QStringLiteral("HTTP")}));
    host.answer.reset();
    repair(4096);
    EXPECT_TRUE(asked().isEmpty());
    EXPECT_FALSE(UserDefaults::standardUserDefaults().boolForKey(QStringLiteral("NetworkKey4")));
}

TEST_F(RepairTest, WithoutAHostTheProxiesAreClosed)
{
    scanner.setHost(nullptr);
    scanner.setProxies(proxiesOf({QStringLiteral("Socks")}));
    repair(4096);
    EXPECT_EQ(asked(), logged({"networksetup -setsocksfirewallproxystate Ethernet off"}));
}

TEST_F(RepairTest, SeveralBitsAreRepairedInOrder)
{
    scanner.setProxies(proxiesOf({QStringLiteral("HTTP")}));
    repair(0x1111);
    EXPECT_EQ(asked(),
              logged({link, wifiLink, "networksetup -setdhcp Ethernet",
                      "networksetup -setdnsservers Ethernet" + servers,
                      "networksetup -setwebproxystate Ethernet off"}));
    EXPECT_EQ(scanner.errorStatus(), 0x1111);
}

TEST_F(RepairTest, WhatIsRepairedIsWhatTheLastScanFound)
{
    struct Changing : RecordingDelegate {
    };
    computer.status = "inactive";
    computer.install(tools);
    scanner.scan();
    shared.setServices(scanner.services());
    scanner.speedup();
    EXPECT_EQ(asked(), logged({link, wifiLink}));
    EXPECT_EQ(delegate.told, (QList<qint64>{1, 1})) << "and scanned again";
}

TEST_F(RepairTest, WithTheLineDownItScansAgain)
{
    scanner.setErrorStatus(0);
    scanner.speedup();
    EXPECT_EQ(scanner.slept(), QList<qint64>{8});
    EXPECT_EQ(scanner.errorStatus(), 65536);
    EXPECT_EQ(host.alerts, QList<QStringList>{routerAlert}) << "the scan's, and no second";
}

TEST_F(RepairTest, AnAddressThatStaysWrongIsTheRoutersFault)
{
    computer.gateway = "192.168.1.1";
    computer.install(tools);
    scanner.setErrorStatus(16);
    scanner.speedup();
    EXPECT_EQ(asked(), logged({"networksetup -setdhcp Ethernet"}));
    EXPECT_EQ(scanner.errorStatus(), 16);
    EXPECT_EQ(delegate.told, QList<qint64>{16});
    EXPECT_EQ(host.alerts, QList<QStringList>{routerAlert});
    EXPECT_TRUE(scanner.stopScanFlag());
    EXPECT_FALSE(scanner.stopFixFlag());
}

TEST_F(RepairTest, AnotherProblemThanTheAddressHasNoAlert)
{
    computer.status = "inactive";
    computer.install(tools);
    scanner.setErrorStatus(16);
    scanner.speedup();
    EXPECT_EQ(scanner.errorStatus(), 1);
    EXPECT_TRUE(host.alerts.isEmpty());
}

TEST_F(RepairTest, AStoppedRepairDoesNothingForGood)
{
    scanner.stopSpeedup();
    repair(0x1111);
    repair(0x1111);
    EXPECT_EQ(tools.log(), "");
    EXPECT_TRUE(scanner.slept().isEmpty());
    EXPECT_TRUE(host.alerts.isEmpty());
    EXPECT_TRUE(scanner.stopFixFlag());
}

// Stopped by another thread while the address is looked for, which is the second step.
TEST_F(RepairTest, AStopEndsItBeforeTheNextStep)
{
    const QString reached = tools.path(QStringLiteral("reached"));
    const QString go = tools.path(QStringLiteral("go"));
    tools.add(QStringLiteral("route"),
              "touch '" + reached.toLocal8Bit() + "'; until [ -e '" + go.toLocal8Bit()
                  + "' ]; do sleep 0.01; done; echo '  interface: lo'");
    net_connect = true;
    scanner.setErrorStatus(0x1111);
    auto repair = std::async(std::launch::async, [this] { scanner.speedup(); });
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(reached); }));
    std::thread([this] { scanner.stopSpeedup(); }).join();
    ASSERT_TRUE(QFile(go).open(QIODevice::WriteOnly));
    repair.get();
    EXPECT_EQ(asked(), logged({link, wifiLink, "networksetup -setdhcp Ethernet"}));
    EXPECT_TRUE(scanner.slept().isEmpty());
    EXPECT_TRUE(host.alerts.isEmpty());
}

TEST_F(RepairTest, EachStepIsTheLastOneWhenItIsStoppedThere)
{
    const QByteArrayList nameServers{"networksetup -setdnsservers Ethernet" + servers};
    const std::pair<qint64, QByteArrayList> steps[] = {{0x1111, {link, wifiLink}},
                                                       {0x1110, {"networksetup -setdhcp Ethernet"}},
                                                       {0x1100, nameServers}};
    for (const auto &[problems, commands] : steps) {
        tools.clearLog();
        scanner.setStopFixFlag(false);
        root.during(
            commands.first(), [this, bits = problems] { repair(bits); },
            [this] { scanner.stopSpeedup(); });
        EXPECT_EQ(asked(), logged(commands)) << problems;
        EXPECT_TRUE(scanner.slept().isEmpty() && host.alerts.isEmpty());
    }
}

TEST_F(RepairTest, AStopInTheLastStepEndsNothing)
{
    struct Stopping : RecordingHost {
        explicit Stopping(NetworkScanner &toStop)
            : scanner(toStop)
        {
        }
        void runModal(NSAlert_Addition &alert) override
        {
            scanner.stopSpeedup();
            RecordingHost::runModal(alert);
        }
        NetworkScanner &scanner;
    } stopping(scanner);
    scanner.setHost(&stopping);
    repair(4096);
    EXPECT_EQ(scanner.slept(), QList<qint64>{8});
}

TEST_F(RepairTest, QuestionsAreAskedOnTheMainThread)
{
    scanner.setProxies(proxiesOf({QStringLiteral("HTTP")}));
    inBackground([this] { repair(4096); });
    EXPECT_EQ(host.alerts, QList<QStringList>{proxyAlert});
    EXPECT_EQ(asked(), logged({"networksetup -setwebproxystate Ethernet off"}));
}

TEST(RepairPauseTest, IsTheRealOneInTheProduct)
{
    class Sleeping : public NetworkScanner
    {
    public:
        using NetworkScanner::sleepFor;
    };
    QElapsedTimer timer;
    timer.start();
    Sleeping().sleepFor(std::chrono::seconds(1));
    EXPECT_GE(timer.elapsed(), 1000);
}

} // namespace
