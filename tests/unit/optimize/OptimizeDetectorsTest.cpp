#include "unit/optimize/OptimizeFixture.h"

#include <QStandardPaths>

#include <thread>

namespace
{

using namespace velq;

using OptimizeDetectorsTest = velq::testing::OptimizeTest;

TEST_F(OptimizeDetectorsTest, OnlyWiFiThatCarriesBesideEthernetIsAPriority)
{
    setCurrent("wlan0");
    EXPECT_TRUE(scanner.wouldSwitchNetwork());
    setCurrent("eth0");
    EXPECT_FALSE(scanner.wouldSwitchNetwork());
    setCurrent("wlan01");
    EXPECT_FALSE(scanner.wouldSwitchNetwork());
    setCurrent(nullptr);
    EXPECT_FALSE(scanner.wouldSwitchNetwork());
}

TEST_F(OptimizeDetectorsTest, BothMustBeUpWithAnAddress)
{
    setCurrent("wlan0");
    for (const char *device : {"eth0", "wlan0"}) {
        setDevice(device, false, true, "1500");
        EXPECT_FALSE(scanner.wouldSwitchNetwork()) << device;
        setDevice(device, true, false, "1500");
        EXPECT_FALSE(scanner.wouldSwitchNetwork()) << device;
        setDevice(device, true, true, "1500");
        EXPECT_TRUE(scanner.wouldSwitchNetwork()) << device;
    }
}

TEST_F(OptimizeDetectorsTest, AComputerWithoutThePortsHasNoPriority)
{
    setCurrent("wlan0");
    for (const char *output : {"", "\n", "\xff\xfe", "Hardware Port: Ethernet\r\nDevice: eth0\r\n",
                               "\nHardware Port: Ethernet\nDevice: eth0\n"}) {
        tools.addPrinting(QStringLiteral("networksetup"), output);
        EXPECT_FALSE(scanner.wouldSwitchNetwork()) << output;
    }
}

TEST_F(OptimizeDetectorsTest, TheMTUIsTheNumberBehindTheWord)
{
    EXPECT_EQ(scanner.currentMTU(), QStringLiteral("1500"));
    EXPECT_EQ(scanner.MTU(), 1500);
    EXPECT_FALSE(scanner.detectMTU());
    EXPECT_TRUE(tools.log().endsWith("ifconfig eth0 |grep 'mtu' |awk '{print $4}'\n"));
}

TEST_F(OptimizeDetectorsTest, EveryOtherNumberIsAProblem)
{
    const std::pair<const char *, qint64> answers[] = {{"1492", 1492},  {"9000", 9000},
                                                       {"150", 150},    {"", 0},
                                                       {"many", 0},     {"99999999999999999999", 0},
                                                       {"-1500", -1500}};
    for (const auto &[mtu, value] : answers) {
        setDevice("eth0", true, true, mtu);
        EXPECT_TRUE(scanner.detectMTU()) << mtu;
        EXPECT_EQ(scanner.MTU(), value) << mtu;
    }
}

TEST_F(OptimizeDetectorsTest, SeveralMTUsComeInOnePiece)
{
    write(QStringLiteral("ifconfig.eth0"), "a: b mtu 15\nc: d mtu 00\n");
    EXPECT_EQ(scanner.currentMTU(), QStringLiteral("1500"));
    EXPECT_FALSE(scanner.detectMTU());
    write(QStringLiteral("ifconfig.eth0"), "a: b mtu 1500\nc: d mtu 1500\n");
    EXPECT_EQ(scanner.currentMTU(), QStringLiteral("15001500"));
    EXPECT_EQ(scanner.MTU(), 15001500);
    EXPECT_TRUE(scanner.detectMTU());
}

// The number is read from the front, whatever comes behind it.
TEST_F(OptimizeDetectorsTest, ALineEndOfAnotherKindStays)
{
    setDevice("eth0", true, true, "1500\r");
    EXPECT_EQ(scanner.currentMTU(), QStringLiteral("1500\r"));
    EXPECT_FALSE(scanner.detectMTU());
}

TEST_F(OptimizeDetectorsTest, WithoutACurrentInterfaceTheMTUIsAProblem)
{
    setCurrent(nullptr);
    scanner.setMTU(1500);
    EXPECT_TRUE(scanner.detectMTU());
    EXPECT_EQ(scanner.MTU(), 0);
    EXPECT_EQ(tools.log(), "ifconfig  |grep 'mtu' |awk '{print $4}'\n");
}

TEST_F(OptimizeDetectorsTest, AnswersWithoutSenseAreNoMTU)
{
    for (const QByteArray &output :
         {QByteArray("\xff\xfe mtu \xff \xff"), QByteArray("mtu"), QByteArray(10 << 20, 'x')}) {
        write(QStringLiteral("ifconfig.eth0"), output);
        EXPECT_TRUE(scanner.detectMTU());
        EXPECT_EQ(scanner.MTU(), 0);
    }
}

// Cut anywhere, the tool's answer gives its number or a part of it, never another.
TEST_F(OptimizeDetectorsTest, CutOutputHasThePartThatIsThere)
{
    const QByteArray whole = "eth0: flags=8863<UP> mtu 1500\n";
    for (qsizetype length = 0; length <= whole.size(); ++length) {
        write(QStringLiteral("ifconfig.eth0"), whole.left(length));
        EXPECT_TRUE(QStringLiteral("1500").startsWith(scanner.currentMTU())) << length;
    }
}

TEST_F(OptimizeDetectorsTest, TheLargestPacketThatPassesIsTheUsualOne)
{
    EXPECT_EQ(scanner.detectISPMaxMTU(), 1500);
    EXPECT_EQ(tools.log(), "ping -c2 -D -s 1472 www.debian.org\n");
}

TEST_F(OptimizeDetectorsTest, ATimeoutAloneEndsTheSearch)
{
    setPing("www.debian.org", "Request timeout for icmp_seq 0\n");
    EXPECT_EQ(scanner.detectISPMaxMTU(), 1500);
    setPing("www.debian.org", "ping: cannot resolve www.debian.org: Unknown host\n");
    EXPECT_EQ(scanner.detectISPMaxMTU(), 1500);
    EXPECT_EQ(tools.log(),
              "ping -c2 -D -s 1472 www.debian.org\nping -c2 -D -s 1472 www.debian.org\n");
}

TEST_F(OptimizeDetectorsTest, OnlyBothTogetherMakeItTrySmallerOnes)
{
    tools.addLogging(QStringLiteral("ping"),
                     "[ \"$4\" -le 1466 ] || echo 'Request timeout, Unknown'");
    EXPECT_EQ(scanner.detectISPMaxMTU(), 1494);
    EXPECT_EQ(tools.log(),
              "ping -c2 -D -s 1472 www.debian.org\nping -c2 -D -s 1470 www.debian.org\n"
              "ping -c2 -D -s 1468 www.debian.org\nping -c2 -D -s 1466 www.debian.org\n");
}

TEST_F(OptimizeDetectorsTest, AStoppedSearchHasTheUsualResult)
{
    const QString go = tools.path(QStringLiteral("go"));
    tools.addLogging(QStringLiteral("ping"),
                     "until [ $4 != 1468 -o -e '" + go.toLocal8Bit()
                         + "' ]; do sleep 0.01; done; echo 'Request timeout, Unknown'");
    std::thread other([&] {
        while (!tools.log().contains(" 1468 "))
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        scanner.stopScan();
        EXPECT_TRUE(QFile(go).open(QIODevice::WriteOnly));
    });
    EXPECT_EQ(scanner.detectISPMaxMTU(), 1500);
    other.join();
    tools.clearLog();
    EXPECT_EQ(scanner.detectISPMaxMTU(), 1500);
    EXPECT_EQ(tools.log(), "ping -c2 -D -s 1472 www.debian.org\n");
}

TEST_F(OptimizeDetectorsTest, ADayAfterItsFlushTheCacheIsDue)
{
    const QDateTime now = QDateTime::currentDateTimeUtc();
    const std::pair<QDateTime, bool> dates[] = {{now, false},
                                                {now.addSecs(-86400 + 60), false},
                                                {now.addSecs(-86400), true},
                                                {now.addDays(-400), true},
                                                {now.addDays(1), false}};
    for (const auto &[date, due] : dates) {
        setFlushed(date);
        EXPECT_EQ(scanner.shouldFlushNetworkCardCache(), due)
            << date.toString(Qt::ISODate).toStdString();
    }
    EXPECT_EQ(tools.log(), "");
}

TEST_F(OptimizeDetectorsTest, WithoutADateTheCacheIsDue)
{
    UserDefaults &defaults = UserDefaults::standardUserDefaults();
    const QString key = QStringLiteral("cacheDate");
    defaults.removeObjectForKey(key);
    EXPECT_TRUE(scanner.shouldFlushNetworkCardCache());
    EXPECT_FALSE(defaults.objectForKey(key).isValid()) << "it is never written";
    defaults.setObject(QStringLiteral("yesterday"), key);
    EXPECT_TRUE(scanner.shouldFlushNetworkCardCache());
}

TEST_F(OptimizeDetectorsTest, TheFirstHostThatKeepsSilentIsTheLastAsked)
{
    EXPECT_FALSE(scanner.dnsServerError());
    tools.clearLog();
    setPing("www.kernel.org", "PING\nRequest timeout for icmp_seq 0\n64 bytes time=1 ms\n");
    EXPECT_TRUE(scanner.dnsServerError());
    EXPECT_EQ(tools.log(), "ping -c2 www.debian.org\nping -c2 www.kernel.org\n");
}

TEST_F(OptimizeDetectorsTest, OtherFailuresAreNotTheNameServers)
{
    for (const QByteArray &output :
         {QByteArray(), QByteArray("ping: cannot resolve www.debian.org: Unknown host\n"),
          QByteArray("ping: sendto: No route to host\n"), QByteArray("request timeout\n"),
          QByteArray("Request\ntimeout\n"), QByteArray("\xff Request timeout\n")}) {
        setPing("www.debian.org", output);
        EXPECT_FALSE(scanner.dnsServerError()) << output.constData();
    }
}

TEST_F(OptimizeDetectorsTest, MissingToolsAreSilent)
{
    // An empty PATH is no working PATH: the shell itself is started by its whole path.
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    EXPECT_FALSE(scanner.wouldSwitchNetwork());
    EXPECT_TRUE(scanner.detectMTU());
    EXPECT_FALSE(scanner.dnsServerError());
    EXPECT_EQ(scanner.detectISPMaxMTU(), 1500);
    qputenv("PATH", path);
}

} // namespace
