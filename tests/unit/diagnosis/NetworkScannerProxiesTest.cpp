#include "scanner/NSButton_service.h"
#include "support/FakeRootDaemon.h"
#include "unit/diagnosis/DiagnosisFixture.h"

#include <QObject>

namespace
{

using namespace velq;
using velq::testing::asRoot;
using velq::testing::FakeRootDaemon;

class ProxyInspectionTest : public velq::testing::DiagnosisTest
{
protected:
    ProxyInspectionTest()
    {
        shared.setServices({service(QStringLiteral("Other"), QStringLiteral("o0"), false),
                            service(QStringLiteral("Ethernet"), QStringLiteral("lo")),
                            service(QStringLiteral("Second"), QStringLiteral("lo"))});
    }

    QStringList kinds()
    {
        QStringList found;
        for (const ProxyServer &proxy : shared.serviceProxy())
            found.append(proxy.proxyType);
        return found;
    }
};

TEST_F(ProxyInspectionTest, AllSixKindsInTheirOrder)
{
    computer.proxies =
        " webproxy securewebproxy gopherproxy streamingproxy socksfirewallproxy ftpproxy ";
    computer.install(tools);
    EXPECT_EQ(
        kinds(),
        (QStringList{QStringLiteral("HTTP"), QStringLiteral("HTTPS"), QStringLiteral("Gopher"),
                     QStringLiteral("Stream"), QStringLiteral("Socks"), QStringLiteral("FTP")}));
    EXPECT_EQ(tools.log(),
              "networksetup -getwebproxy Ethernet | awk -F ': ' '{print $2}'\n"
              "networksetup -getsecurewebproxy Ethernet | awk -F ': ' '{print $2}'\n"
              "networksetup -getgopherproxy Ethernet | awk -F ': ' '{print $2}'\n"
              "networksetup -getstreamingproxy Ethernet | awk -F ': ' '{print $2}'\n"
              "networksetup -getsocksfirewallproxy Ethernet | awk -F ': ' '{print $2}'\n"
              "networksetup -getftpproxy Ethernet | awk -F ': ' '{print $2}'\n");
}

TEST_F(ProxyInspectionTest, OneKindIsOneRecordOfTheList)
{
    computer.proxies = " securewebproxy ";
    computer.install(tools);
    const ProxyServer wanted{.proxyType = QStringLiteral("HTTPS"),
                             .serverIP = QStringLiteral("192.0.2.9"),
                             .port = QStringLiteral("8080"),
                             .enabled = true,
                             .authenticated = false};
    EXPECT_EQ(shared.serviceProxy(), QList<ProxyServer>{wanted});
    EXPECT_EQ(&shared.serviceProxy(), &shared.proxies());
    EXPECT_EQ(shared.proxies().size(), 1);
}

TEST_F(ProxyInspectionTest, OnlyNoughtNeedsNoPassword)
{
    for (const auto &[flag, authenticated] :
         {std::pair("0", false), {"1", true}, {"", true}, {"00", true}, {"No", true}}) {
        tools.addPrinting(QStringLiteral("networksetup"),
                          QByteArray("Enabled: Yes\nServer: h\nPort: 1\nAuthenticated Proxy "
                                     "Enabled: ")
                              + flag + '\n');
        ASSERT_EQ(shared.serviceProxy().size(), 6);
        EXPECT_EQ(shared.proxies()[0].authenticated, authenticated) << flag;
    }
}

// The tool always prints four lines of a proxy that is on, so nobody counts them.
TEST_F(ProxyInspectionTest, TheFieldsAreReadByTheirPlacesHoweverManyThereAre)
{
    const auto inspected = [this](const char *report) {
        tools.addPrinting(QStringLiteral("networksetup"), report);
        const QList<ProxyServer> &found = shared.serviceProxy();
        EXPECT_EQ(found.size(), 6) << report;
        return found.value(0);
    };
    ProxyServer wanted{.proxyType = QStringLiteral("HTTP"),
                       .serverIP = QStringLiteral("h"),
                       .port = QStringLiteral("1"),
                       .enabled = true,
                       .authenticated = true};
    EXPECT_EQ(inspected("Enabled: Yes\nServer: h\nPort: 1\n"), wanted);
    wanted.authenticated = false;
    EXPECT_EQ(inspected("Enabled: Yes\nServer: h\nPort: 1\nA: 0\nMore: 1\n"), wanted);
    const ProxyServer nameless = inspected("Enabled: Yes\n");
    EXPECT_TRUE(nameless.serverIP.isEmpty());
    EXPECT_TRUE(nameless.port.isNull());
    EXPECT_TRUE(nameless.enabled && nameless.authenticated);
}

TEST_F(ProxyInspectionTest, OnlyYesIsOn)
{
    for (const char *enabled : {"No", "yes", "YES", "Yes ", ""}) {
        tools.addPrinting(QStringLiteral("networksetup"),
                          QByteArray("Enabled: ") + enabled + "\nServer: h\nPort: 1\nA: 0\n");
        EXPECT_TRUE(shared.serviceProxy().isEmpty()) << enabled;
    }
}

TEST_F(ProxyInspectionTest, WithoutACurrentServiceTheListIsEmptied)
{
    shared.setProxies(proxiesOf({QStringLiteral("HTTP")}));
    shared.setServices({service(QStringLiteral("Other"), QStringLiteral("o0"), false)});
    computer.install(tools);
    EXPECT_TRUE(shared.serviceProxy().isEmpty());
    EXPECT_TRUE(shared.proxies().isEmpty());
    EXPECT_EQ(tools.log(), "");
}

TEST_F(ProxyInspectionTest, NamesAreNotQuoted)
{
    shared.setServices({service(QStringLiteral("USB 10/100 LAN"), QStringLiteral("lo"))});
    tools.addPrinting(QStringLiteral("networksetup"), "");
    EXPECT_TRUE(shared.serviceProxy().isEmpty());
    EXPECT_TRUE(tools.log().startsWith(
        "networksetup -getwebproxy USB 10/100 LAN | awk -F ': ' '{print $2}'\n"));
}

TEST_F(ProxyInspectionTest, TheServiceIsCalledByItsName)
{
    NetworkService port = service(QStringLiteral("LAN"), QStringLiteral("lo"));
    port.netType = QStringLiteral("Port");
    shared.setServices({port});
    tools.addPrinting(QStringLiteral("networksetup"), "");
    EXPECT_TRUE(shared.serviceProxy().isEmpty());
    EXPECT_TRUE(tools.log().startsWith("networksetup -getwebproxy LAN | "));
}

class ProxySwitchingTest : public ProxyInspectionTest
{
protected:
    void SetUp() override
    {
        if (geteuid() != 0)
            GTEST_SKIP() << "only root can be the root that answers";
    }

    void expectAsked(const QByteArrayList &commandLines) const
    {
        QByteArray lines;
        for (const QByteArray &each : commandLines)
            lines += asRoot(each);
        EXPECT_EQ(tools.log(), lines);
    }

    FakeRootDaemon root{tools};
};

const QStringList allKinds{QStringLiteral("HTTP"),   QStringLiteral("HTTPS"),
                           QStringLiteral("Gopher"), QStringLiteral("Stream"),
                           QStringLiteral("Socks"),  QStringLiteral("FTP")};

TEST_F(ProxySwitchingTest, EachKindHasItsCommands)
{
    shared.setProxies(proxiesOf(allKinds));
    QByteArrayList wanted;
    for (const char *name : {"webproxy", "securewebproxy", "gopherproxy", "streamingproxy",
                             "socksfirewallproxy", "ftpproxy"}) {
        for (const char *state : {"off", "on"})
            wanted.append(QByteArray("networksetup -set") + name + "state Ethernet " + state);
    }
    for (qint64 i = 0; i < 6; ++i) {
        shared.disableProxy(i);
        shared.openProxy(i);
    }
    expectAsked(wanted);
}

TEST_F(ProxySwitchingTest, AnIndexOutsideTheListDoesNothing)
{
    shared.setProxies(proxiesOf({QStringLiteral("HTTP"), QStringLiteral("FTP")}));
    for (const qint64 index : {qint64{-1}, qint64{2}, std::numeric_limits<qint64>::max(),
                               std::numeric_limits<qint64>::min()}) {
        shared.disableProxy(index);
        shared.openProxy(index);
    }
    expectAsked({});
}

TEST_F(ProxySwitchingTest, AllAreSwitchedOffInOrder)
{
    shared.disableAllProxy();
    expectAsked({});
    shared.setProxies(proxiesOf(
        {QStringLiteral("HTTP"), QStringLiteral("http"), QString(), QStringLiteral("FTP")}));
    shared.disableAllProxy();
    expectAsked({"networksetup -setwebproxystate Ethernet off",
                 "networksetup -setftpproxystate Ethernet off"});
    EXPECT_EQ(shared.proxies().size(), 4);
    EXPECT_TRUE(shared.proxies().first().enabled);
}

// With the line up, looking for the current service is a command as well.
TEST_F(ProxySwitchingTest, TheCurrentServiceIsLookedForOnceAndWhenThereIsNeed)
{
    tools.addLogging(QStringLiteral("route"), "echo '  interface: lo'");
    net_connect = true;
    shared.disableAllProxy();
    shared.disableProxy(0);
    shared.openProxy(-1);
    expectAsked({});
    NetworkService port = service(QStringLiteral("LAN"), QStringLiteral("lo"));
    port.netType = QStringLiteral("Port");
    shared.setServices({port});
    shared.setProxies(proxiesOf({QStringLiteral("HTTP"), QStringLiteral("FTP")}));
    shared.disableAllProxy();
    EXPECT_EQ(tools.log(),
              "route -n get www.debian.org|grep 'interface' | awk -F ': ' '{print $2}'\n"
                  + asRoot("networksetup -setwebproxystate LAN off")
                  + asRoot("networksetup -setftpproxystate LAN off"));
}

TEST_F(ProxySwitchingTest, AnUnknownKindHasNoCommand)
{
    shared.setProxies(proxiesOf({QStringLiteral("Other")}));
    shared.disableProxy(0);
    shared.openProxy(0);
    expectAsked({});
}

TEST_F(ProxySwitchingTest, WithoutACurrentServiceItsNameIsAbsent)
{
    shared.setProxies(proxiesOf({QStringLiteral("HTTP")}));
    shared.setServices({});
    shared.disableProxy(0);
    shared.openProxy(0);
    shared.disableAllProxy();
    expectAsked({"networksetup -setwebproxystate (null) off",
                 "networksetup -setwebproxystate (null) on",
                 "networksetup -setwebproxystate (null) off"});
}

TEST_F(ProxySwitchingTest, ABoxSwitchesItsProxy)
{
    shared.setProxies(proxiesOf({QStringLiteral("HTTP"), QStringLiteral("Socks")}));
    QObject box;
    setIndex(box, 1);
    for (const bool checked : {false, true}) {
        box.setProperty("checked", checked);
        shared.closeProxy(box);
    }
    QObject first;
    shared.closeProxy(first);
    expectAsked({"networksetup -setsocksfirewallproxystate Ethernet off",
                 "networksetup -setsocksfirewallproxystate Ethernet on",
                 "networksetup -setwebproxystate Ethernet off"});
}

TEST_F(ProxySwitchingTest, TheViewsBoxesAreConnected)
{
    velq::testing::RecordingHost host;
    EXPECT_EQ(shared.createProxyControlView(), nullptr);
    shared.setHost(&host);
    shared.setProxies(proxiesOf({QStringLiteral("FTP")}));
    EXPECT_NE(shared.createProxyControlView(), nullptr);
    ASSERT_EQ(host.proxyViews.size(), 1);
    EXPECT_EQ(host.proxyViews.first(), shared.proxies());
    QObject box;
    box.setProperty("checked", true);
    host.closeProxy(box);
    expectAsked({"networksetup -setftpproxystate Ethernet on"});
}

} // namespace
