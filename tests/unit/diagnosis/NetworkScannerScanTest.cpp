#include "common/Image.h"
#include "scanner/NetData.h"
#include "unit/diagnosis/DiagnosisFixture.h"

#include <QFile>
#include <QScopeGuard>

#include <array>

namespace
{

using namespace velq;
using velq::testing::FakeComputer;
using velq::testing::RecordingDelegate;
using velq::testing::RecordingHost;
using velq::testing::routerAlert;
using velq::testing::waitUntil;

const QString disconnected =
    QStringLiteral("Either the cable for Ethernet is not plugged in or the device at the other end "
                   "is not responding.");
const QString deadServer = QStringLiteral(
    "The current DNS server failed to parse. Please switch to the correct DNS server.");
const std::array normals{QStringLiteral("Network card connected"),
                         QStringLiteral("Obtained IP successfully"),
                         QStringLiteral("The current DNS server parsed domains successfully."),
                         QStringLiteral("No proxy issues since no HTTP proxy used.")};

class ScanTest : public velq::testing::DiagnosisTest
{
protected:
    ScanTest()
    {
        shared.setDelegate(&delegate);
        shared.setHost(&host);
    }

    void scan()
    {
        computer.install(tools);
        shared.scan();
    }

    // Of a computer with one service that is on, on that device; printf(1) writes the names.
    void scanWithService(const QByteArray &service, const QByteArray &device)
    {
        computer.install(tools);
        tools.addLogging(
            QStringLiteral("networksetup"),
            R"sh(case $1 in
-listallhardwareports) printf '\nHardware Port: )sh"
                + service + R"sh(\nDevice: )sh" + device
                + R"sh(\nEthernet Address: 02\n\nHardware Port: Last\nDevice: l\nEthernet Address: 03\n' ;;
*) echo Enabled ;;
esac)sh");
        shared.scan();
    }

    const NetData &item(qsizetype index) const { return *shared.array()[index]; }

    void expectNormal(qsizetype index) const
    {
        EXPECT_EQ(item(index).issue(), 0);
        ASSERT_EQ(item(index).errorStatus().size(), 1) << index;
        const NetStatus &status = *item(index).errorStatus().first();
        EXPECT_FALSE(status.error);
        EXPECT_EQ(status.name, QStringLiteral("Normal"));
        EXPECT_EQ(status.des, normals.at(static_cast<std::size_t>(index)));
        EXPECT_EQ(status.subErrorView, nullptr);
    }

    void expectAbnormal(qsizetype index, const QString &des) const
    {
        ASSERT_EQ(item(index).errorStatus().size(), 1) << index;
        const NetStatus &status = *item(index).errorStatus().first();
        EXPECT_TRUE(status.error);
        EXPECT_EQ(status.name, QStringLiteral("Abnormal"));
        EXPECT_EQ(status.des, des);
    }

    // By an earlier scan, if at all.
    void expectUntouched(qsizetype first) const
    {
        for (qsizetype index = first; index < 4; ++index)
            EXPECT_TRUE(item(index).errorStatus().isEmpty()) << index;
    }

    void ignoreProxies() const { shared.array()[3]->resetIgnore(); }

    RecordingDelegate delegate;
    RecordingHost host;
};

const QByteArray inventoryLog =
    "networksetup -listallhardwareports |grep -A 2 'Hardware Port'|awk -F ': ' '{print $2}'\n"
    "networksetup -getnetworkserviceenabled Ethernet\n"
    "ifconfig lo |grep 'status'|awk '{print $2}'\n"
    "ping -c2 www.debian.org\n";

TEST_F(ScanTest, TheFourItemsAreAsTheyAreShown)
{
    struct Row {
        const char *title;
        const char *des;
        const char *key;
        bool noShowIgnore;
    };
    const Row rows[] = {
        {"Ethernet & Wi-Fi Connectivity",
         "Check the connectivity condition and work status of Ethernet and Wi-Fi.", "NetworkKey1",
         true},
        {"Diagnose IP problem",
         "Your Mac may not connect to the Internet due to the failure of obtaining IP address "
         "begins with 169.254.xxx.xxx.",
         "NetworkKey2", true},
        {"Diagnose DNS problem",
         "When DNS server encounters problems, some domains may not be parsed and opened.",
         "NetworkKey3", true},
        {"Diagnose Proxy problem ",
         "After setting HTTP proxy in browsers, some websites may not be accessed or respond "
         "slowly.",
         "NetworkKey4", false}};
    ASSERT_EQ(shared.array().size(), 4);
    for (qsizetype i = 0; i < 4; ++i) {
        EXPECT_EQ(item(i).title(), QString::fromLatin1(rows[i].title));
        EXPECT_EQ(item(i).des(), QString::fromLatin1(rows[i].des));
        EXPECT_EQ(item(i).ignoreKey(), QString::fromLatin1(rows[i].key));
        EXPECT_EQ(item(i).noShowIgnore(), rows[i].noShowIgnore);
    }
    ASSERT_TRUE(shared.data().has_value());
    for (qsizetype i = 0; i < 4; ++i)
        EXPECT_EQ(shared.data()->at(i), shared.array()[i]);
    EXPECT_FALSE(shared.needManully());
}

// Their files lie beside the test program.
TEST_F(ScanTest, TheItemsHaveTheBundlesImages)
{
    EXPECT_EQ(item(0).image()->name(), QStringLiteral("icon_ethernet_normal"));
    EXPECT_EQ(item(0).selectImage()->name(), QStringLiteral("icon_ethernet_select"));
    EXPECT_EQ(item(1).image()->name(), QStringLiteral("icon_ip_normal"));
    EXPECT_EQ(item(1).selectImage()->name(), QStringLiteral("icon_ip_select"));
    EXPECT_EQ(item(2).image()->name(), QStringLiteral("icon_dns_normal"));
    EXPECT_EQ(item(2).selectImage()->name(), QStringLiteral("icon_dns_select"));
    EXPECT_EQ(item(3).image()->name(), QStringLiteral("icon_http_normal"));
    EXPECT_EQ(item(3).selectImage(), nullptr) << "has no file";
}

TEST_F(ScanTest, AnInternetThatAnswersMakesAllNormal)
{
    computer.ping = "64 bytes from 192.0.2.1: icmp_seq=0 ttl=64 time=3 ms";
    computer.status = "inactive";
    shared.setErrorStatus(0x11111);
    scan();
    for (qsizetype i = 0; i < 4; ++i)
        expectNormal(i);
    EXPECT_EQ(shared.errorStatus(), 0);
    EXPECT_EQ(shared.issueCount(), 0);
    EXPECT_TRUE(delegate.told.isEmpty() && host.alerts.isEmpty());
    EXPECT_EQ(tools.log(), inventoryLog);
}

TEST_F(ScanTest, WithoutALinkOnlyTheFirstItemIsWritten)
{
    computer.status = "inactive";
    shared.setProxies(proxiesOf({QStringLiteral("HTTP")}));
    scan();
    EXPECT_EQ(shared.proxies().size(), 1) << "what no check has read anew stays";
    expectAbnormal(0, disconnected);
    EXPECT_EQ(item(0).errorStatus().first()->subErrorView, nullptr);
    expectUntouched(1);
    EXPECT_EQ(shared.errorStatus(), 1);
    EXPECT_EQ(shared.issueCount(), 1);
    EXPECT_EQ(delegate.told, QList<qint64>{1});
    EXPECT_EQ(tools.log(), inventoryLog);
}

TEST_F(ScanTest, ASwitchedOffServiceIsNoLink)
{
    computer.enabled = "Disabled";
    scan();
    EXPECT_EQ(delegate.told, QList<qint64>{1});
}

// One is on without a link, the other off with one.
TEST_F(ScanTest, TwoHalvesAreNoLink)
{
    computer.install(tools);
    tools.addLogging(QStringLiteral("networksetup"), R"sh(case $1 in
-listallhardwareports) printf '\nHardware Port: On\nDevice: on0\nEthernet Address: 02\n\nHardware Port: Off\nDevice: off0\nEthernet Address: 03\n\nHardware Port: Last\nDevice: l\nEthernet Address: 04\n' ;;
-getnetworkserviceenabled) [ "$2" = On ] && echo Enabled || echo Disabled ;;
esac)sh");
    tools.addLogging(QStringLiteral("ifconfig"),
                     R"sh([ "$1" = off0 ] && echo '  status: active')sh");
    shared.scan();
    EXPECT_EQ(shared.services().size(), 2);
    expectAbnormal(0, disconnected);
    EXPECT_EQ(delegate.told, QList<qint64>{1});
}

TEST_F(ScanTest, AWrongAddressIsNamedWithItsService)
{
    computer.gateway = "192.168.1.1";
    scan();
    expectNormal(0);
    expectAbnormal(1, QStringLiteral("The devices below failed to obtain IP Ethernet: 127.0.0.1"));
    EXPECT_NE(item(1).errorStatus().first()->subErrorView, nullptr);
    EXPECT_EQ(host.errorViews, QStringList{QStringLiteral("Ethernet")});
    expectUntouched(2);
    EXPECT_EQ(shared.errorStatus(), 16);
    EXPECT_EQ(shared.issueCount(), 1);
    EXPECT_EQ(delegate.told, QList<qint64>{16});
}

// One on the device that no longer is, when the address is asked for.
TEST_F(ScanTest, AbsentNamesAreShownInParentheses)
{
    scanWithService("Ethernet", "gone0");
    expectAbnormal(1, QStringLiteral("The devices below failed to obtain IP Ethernet: (null)"));
}

TEST_F(ScanTest, ANameIsShownAsItIs)
{
    computer.gateway = "192.168.1.1";
    scanWithService("%%1%%2", "lo");
    expectAbnormal(1, QStringLiteral("The devices below failed to obtain IP %1%2: 127.0.0.1"));
}

TEST_F(ScanTest, ADeadNameServer)
{
    computer.lookup = ";; connection timed out; no servers could be reached";
    scan();
    expectNormal(0);
    expectNormal(1);
    expectAbnormal(2, deadServer);
    EXPECT_EQ(item(2).errorStatus().first()->subErrorView, nullptr);
    expectUntouched(3);
    EXPECT_EQ(shared.errorStatus(), 256);
    EXPECT_EQ(delegate.told, QList<qint64>{256});
    EXPECT_TRUE(tools.log().endsWith("nslookup www.iana.org\n"));
}

TEST_F(ScanTest, ProxiesAreAProblemToWhoIgnoresThem)
{
    computer.proxies = " webproxy ";
    ignoreProxies();
    scan();
    for (qsizetype i = 0; i < 3; ++i)
        expectNormal(i);
    expectAbnormal(3, QStringLiteral("Please disable HTTP proxy."));
    EXPECT_NE(item(3).errorStatus().first()->subErrorView, nullptr);
    ASSERT_EQ(host.proxyViews.size(), 1);
    EXPECT_EQ(host.proxyViews.first(), shared.proxies());
    EXPECT_EQ(shared.errorStatus(), 4096);
    EXPECT_EQ(delegate.told, QList<qint64>{4096});
    EXPECT_EQ(shared.issueCount(), 0) << "it is ignored";
    EXPECT_TRUE(host.alerts.isEmpty());
}

TEST_F(ScanTest, ProxiesAreNoneToAnybodyElse)
{
    computer.proxies = " webproxy ";
    scan();
    for (qsizetype i : {0, 2, 3})
        expectNormal(i);
    EXPECT_EQ(shared.proxies().size(), 1);
    EXPECT_EQ(shared.errorStatus(), 65536);
}

TEST_F(ScanTest, TheRouterIsWhatRemains)
{
    scan();
    for (qsizetype i : {0, 2, 3})
        expectNormal(i);
    EXPECT_EQ(item(1).issue(), 1);
    EXPECT_TRUE(item(1).errorStatus().isEmpty());
    EXPECT_EQ(host.errorViews, QStringList{QStringLiteral("Ethernet")});
    EXPECT_EQ(*host.ended, 0);
    velq::testing::settle();
    EXPECT_EQ(*host.ended, 1) << "it is in no list";
    EXPECT_EQ(shared.errorStatus(), 65536);
    EXPECT_EQ(shared.issueCount(), 1);
    EXPECT_TRUE(delegate.told.isEmpty());
    EXPECT_EQ(host.alerts, QList<QStringList>{routerAlert});
    EXPECT_TRUE(shared.stopScanFlag());
}

TEST_F(ScanTest, TheCommandsAreExactAndInOrder)
{
    scan();
    EXPECT_EQ(tools.log(),
              inventoryLog
                  + "route get default | grep gateway | awk '{print $2}'\n"
                    "route get default | grep interface | awk '{print $2}'\n"
                    "ifconfig lo | grep netmask | awk '{print $4}'\n"
                    "nslookup www.iana.org\n"
                    "networksetup -getwebproxy Ethernet | awk -F ': ' '{print $2}'\n"
                    "networksetup -getsecurewebproxy Ethernet | awk -F ': ' '{print $2}'\n"
                    "networksetup -getgopherproxy Ethernet | awk -F ': ' '{print $2}'\n"
                    "networksetup -getstreamingproxy Ethernet | awk -F ': ' '{print $2}'\n"
                    "networksetup -getsocksfirewallproxy Ethernet | awk -F ': ' '{print $2}'\n"
                    "networksetup -getftpproxy Ethernet | awk -F ': ' '{print $2}'\n");
}

TEST_F(ScanTest, FeedbackOpensThePage)
{
    tools.add(QStringLiteral("xdg-open"),
              "echo \"$*\" >'" + tools.path(QStringLiteral("part")).toLocal8Bit() + "'; mv '"
                  + tools.path(QStringLiteral("part")).toLocal8Bit() + "' '"
                  + tools.path(QStringLiteral("opened")).toLocal8Bit() + "'");
    host.answer = NSAlert_Addition::cancelTag + 1;
    scan();
    EXPECT_FALSE(shared.stopScanFlag());
    QFile opened(tools.path(QStringLiteral("opened")));
    ASSERT_TRUE(waitUntil([&] { return opened.exists(); }));
    ASSERT_TRUE(opened.open(QIODevice::ReadOnly));
    EXPECT_EQ(opened.readAll(), "https://www.debian.org/support\n");
}

TEST_F(ScanTest, AnAlertThatWasNotAnsweredDoesNothing)
{
    QFile opened(tools.path(QStringLiteral("opened")));
    const auto openAs = [&](const QByteArray &word) {
        tools.add(QStringLiteral("xdg-open"),
                  "echo " + word + " >>'" + opened.fileName().toLocal8Bit() + "'");
    };
    openAs("unanswered");
    host.answer.reset();
    scan();
    EXPECT_FALSE(shared.stopScanFlag());
    EXPECT_EQ(shared.errorStatus(), 65536);
    // A page of this one's would come before that of the next, which is answered.
    openAs("answered");
    host.answer = NSAlert_Addition::cancelTag + 1;
    shared.scan();
    ASSERT_TRUE(waitUntil([&] { return opened.size() > 0; }));
    ASSERT_TRUE(opened.open(QIODevice::ReadOnly));
    EXPECT_EQ(opened.readAll(), "answered\n");
}

TEST_F(ScanTest, AnIgnoredItemDoesNotCount)
{
    computer.gateway = "192.168.1.1";
    shared.array()[1]->resetIgnore();
    scan();
    EXPECT_EQ(shared.issueCount(), 0);
    EXPECT_EQ(delegate.told, QList<qint64>{16});
}

TEST_F(ScanTest, AScanForgetsTheOneBefore)
{
    computer.gateway = "192.168.1.1";
    scan();
    for (const std::shared_ptr<NetData> &each : shared.array())
        each->setHasIgnore(true);
    computer.status = "inactive";
    scan();
    EXPECT_EQ(shared.services().size(), 1);
    EXPECT_EQ(shared.errorStatus(), 1);
    EXPECT_EQ(delegate.told, (QList<qint64>{16, 1}));
    for (const std::shared_ptr<NetData> &each : shared.array())
        EXPECT_FALSE(each->hasIgnore());
    expectAbnormal(0, disconnected);
    expectAbnormal(1, QStringLiteral("The devices below failed to obtain IP Ethernet: 127.0.0.1"));
}

// An item that takes another's place may count as it likes.
TEST_F(ScanTest, TheRouterIsNotBlamedWhileAnItemHasAnIssue)
{
    struct Stubborn : NetData {
        qint64 issue() const override { return 1; }
    };
    const ItemScanner::Array items = shared.array();
    const auto finally = qScopeGuard([&] { shared.setArray(items); });
    ItemScanner::Array others = items;
    others[2] = std::make_shared<Stubborn>();
    shared.setArray(others);
    scan();
    expectNormal(3);
    EXPECT_EQ(shared.errorStatus(), 0);
    EXPECT_TRUE(host.alerts.isEmpty() && delegate.told.isEmpty());
}

TEST_F(ScanTest, TheDelegateIsToldOfWhatIsAlreadyThere)
{
    struct Looking : RecordingDelegate {
        explicit Looking(const NetworkScanner &telling)
            : scanner(telling)
        {
        }
        void networkErrorStatus(qint64 status) override
        {
            RecordingDelegate::networkErrorStatus(status);
            EXPECT_EQ(scanner.errorStatus(), status);
            const NetData::StatusList lines = scanner.array()[told.size() - 1]->errorStatus();
            EXPECT_TRUE(lines.size() == 1 && lines.first()->error) << status;
        }
        const NetworkScanner &scanner;
    } looking(shared);
    shared.setDelegate(&looking);
    const FakeComputer whole = computer;
    computer.status = "inactive";
    scan();
    computer = whole;
    computer.gateway = "192.168.1.1";
    scan();
    computer = whole;
    computer.lookup = "no servers";
    scan();
    computer = whole;
    computer.proxies = " webproxy ";
    ignoreProxies();
    scan();
    EXPECT_EQ(looking.told, (QList<qint64>{1, 16, 256, 4096}));
}

TEST_F(ScanTest, TheDelegateIsToldOnTheScanningThread)
{
    struct OfThread : NetworkErrorDelegate {
        void networkErrorStatus(qint64 /*status*/) override { told = QThread::currentThreadId(); }
        Qt::HANDLE told = nullptr;
    } delegateOfThread;
    shared.setDelegate(&delegateOfThread);
    computer.status = "inactive";
    computer.install(tools);
    Qt::HANDLE scanning = nullptr;
    inBackground([&] {
        scanning = QThread::currentThreadId();
        shared.scan();
    });
    EXPECT_NE(delegateOfThread.told, nullptr);
    EXPECT_EQ(delegateOfThread.told, scanning);
    EXPECT_NE(scanning, QThread::currentThreadId());
}

TEST_F(ScanTest, OneThatIsOutOfUseScansWhenItIsAsked)
{
    const auto finally = qScopeGuard([this] { shared.setDisable(false); });
    shared.setDisable(true);
    computer.status = "inactive";
    scan();
    EXPECT_EQ(delegate.told, QList<qint64>{1});
}

TEST_F(ScanTest, NobodyNeedListen)
{
    computer.status = "inactive";
    shared.setDelegate(nullptr);
    scan();
    EXPECT_EQ(shared.errorStatus(), 1);
    NetworkErrorDelegate deaf;
    shared.setDelegate(&deaf);
    scan();
    EXPECT_EQ(shared.errorStatus(), 1);
}

TEST_F(ScanTest, WithoutAHostThereAreNoViewsAndTheFirstButton)
{
    shared.setHost(nullptr);
    computer.gateway = "192.168.1.1";
    scan();
    EXPECT_EQ(item(1).errorStatus().first()->subErrorView, nullptr);
    computer.gateway = "127.0.0.254";
    scan();
    EXPECT_EQ(shared.errorStatus(), 65536);
    EXPECT_TRUE(shared.stopScanFlag());
}

// Where the host has no windows.
TEST_F(ScanTest, AHostMayHaveNoViews)
{
    struct Windowless : RecordingHost {
        std::shared_ptr<QWidget> createIPErrorView(const QString &) override { return nullptr; }
    } windowless;
    shared.setHost(&windowless);
    computer.gateway = "192.168.1.1";
    scan();
    EXPECT_EQ(item(1).errorStatus().first()->subErrorView, nullptr);
}

TEST_F(ScanTest, WindowsLiveOnTheMainThread)
{
    computer.proxies = " webproxy ";
    ignoreProxies();
    computer.install(tools);
    inBackground([this] { shared.scan(); });
    EXPECT_EQ(host.proxyViews.size(), 1);
    shared.array()[3]->resetIgnore();
    inBackground([this] { shared.scan(); });
    EXPECT_EQ(host.alerts, QList<QStringList>{routerAlert});
    EXPECT_TRUE(waitUntil([this] { return *host.ended == 2; }));
}

TEST_F(ScanTest, AStoppedScannerStaysStopped)
{
    computer.status = "inactive";
    shared.stopScan();
    scan();
    expectUntouched(0);
    EXPECT_EQ(shared.errorStatus(), 0);
    EXPECT_TRUE(shared.stopScanFlag());
    EXPECT_EQ(tools.log(), inventoryLog);
    scan();
    expectUntouched(0);
    EXPECT_TRUE(delegate.told.isEmpty());
}

TEST_F(ScanTest, AStoppedScannerStillSeesTheInternet)
{
    computer.ping = "64 bytes from 192.0.2.1: icmp_seq=0 ttl=64 time=3 ms";
    shared.stopScan();
    scan();
    for (qsizetype i = 0; i < 4; ++i)
        expectNormal(i);
}

} // namespace
