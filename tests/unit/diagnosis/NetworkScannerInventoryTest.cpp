#include "diagnosis/NetworkScanner.h"

#include "support/FakeTool.h"
#include "support/NetworkNamespace.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::ip;

class InventoryTest : public ::testing::Test
{
protected:
    InventoryTest()
    {
        net_connect = false;
        scanner.services().clear();
    }

    void expectLog(const QByteArray &lines) const { EXPECT_EQ(tools.log(), lines); }

    void addService(const char *name, const char *device, bool active)
    {
        NetworkService service;
        service.netType = QString::fromUtf8(name);
        service.interface = QString::fromUtf8(device);
        service.isActive = active;
        scanner.services().append(service);
    }

    velq::testing::FakeTools tools;
    NetworkScanner &scanner = NetworkScanner::shareScanner();
};

const QString tool = QStringLiteral("networksetup");
const QString ethernet = QStringLiteral("Ethernet");
const QString eth0 = QStringLiteral("eth0");

TEST_F(InventoryTest, IsOneObject)
{
    EXPECT_EQ(&NetworkScanner::shareScanner(), &scanner);
}

TEST_F(InventoryTest, FindsTheDeviceOfAService)
{
    tools.addPrinting(tool,
                      "\nHardware Port: Ethernet\nDevice: eth0\nEthernet Address: 02\n"
                      "\nHardware Port: Wi-Fi\nDevice: wlan0\nEthernet Address: 03\n");
    EXPECT_EQ(NetworkScanner::networkInterfaceForService(QStringLiteral("Wi-Fi")),
              QStringLiteral("wlan0"));
    expectLog(
        "networksetup -listallhardwareports|grep -A 1 'Wi-Fi'|grep 'Device'|awk '{print $2}'\n");
    EXPECT_EQ(NetworkScanner::networkInterfaceForService(QStringLiteral("FireWire")),
              QStringLiteral(""));
}

TEST_F(InventoryTest, SeveralThatMatchGiveTheirDevicesInOnePiece)
{
    tools.addPrinting(tool,
                      "\nHardware Port: LAN-a\nDevice: a0\n\nHardware Port: LAN-b\nDevice: b0\n");
    EXPECT_EQ(NetworkScanner::networkInterfaceForService(QStringLiteral("LAN")),
              QStringLiteral("a0b0"));
}

TEST_F(InventoryTest, FindsTheServiceOnADeviceAmongTheKnownOnes)
{
    addService("Ethernet", "eth0", false);
    addService("Second", "eth0", false);
    EXPECT_EQ(NetworkScanner::networkServiceForInterface(eth0), ethernet);
    EXPECT_TRUE(NetworkScanner::networkServiceForInterface(QStringLiteral("Eth0")).isNull());
    expectLog("");
}

TEST_F(InventoryTest, OnlyActiveIsActive)
{
    const std::pair<const char *, bool> answers[] = {
        {"eth0: flags=8863<UP>\n\tstatus: active\n", true},
        {"\tstatus: inactive\n", false},
        {"", false},
        {"eth0: flags=8863<UP>\n", false},
        {"\tstatus: active\n\tstatus: active\n", false},
        {"\tstatus: Active\n", false},
        {"\tstatus: active\r\n", false}};
    for (const auto &[output, active] : answers) {
        tools.addPrinting(QStringLiteral("ifconfig"), output);
        EXPECT_EQ(NetworkScanner::networkServiceIsActive(eth0), active) << output;
    }
    tools.clearLog();
    (void)NetworkScanner::networkServiceIsActive(eth0);
    expectLog("ifconfig eth0 |grep 'status'|awk '{print $2}'\n");
}

// Its parentheses are a fault to the shell, which then runs nothing.
TEST_F(InventoryTest, AnAbsentNameStandsInParentheses)
{
    tools.addPrinting(QStringLiteral("ifconfig"), "\tstatus: active\n");
    EXPECT_FALSE(NetworkScanner::networkServiceIsActive(QString()));
    expectLog("");
}

TEST_F(InventoryTest, AnEchoIsConnectivity)
{
    tools.addPrinting(QStringLiteral("ping"), "64 bytes from 192.0.2.1: icmp_seq=1 time=3 ms\n");
    EXPECT_TRUE(NetworkScanner::hasConnectivity());
    EXPECT_TRUE(net_connect);
    expectLog("ping -c2 www.debian.org\n");
    tools.addPrinting(QStringLiteral("ping"), "Request timeout for icmp_seq 0\n");
    EXPECT_FALSE(NetworkScanner::hasConnectivity());
    EXPECT_FALSE(net_connect);
}

TEST_F(InventoryTest, TheCurrentInterfaceIsThatOfTheRoute)
{
    addService("Ethernet", "eth0", true);
    tools.addPrinting(QStringLiteral("route"),
                      "   route to: www.debian.org\n  interface: wlan0\n      flags: <UP>\n");
    net_connect = true;
    EXPECT_EQ(NetworkScanner::currentNetworkInterface(), QStringLiteral("wlan0"));
    expectLog("route -n get www.debian.org|grep 'interface' | awk -F ': ' '{print $2}'\n");
    tools.addPrinting(QStringLiteral("route"), "  interface: wlan0 \n  interface: eth0\n");
    EXPECT_EQ(NetworkScanner::currentNetworkInterface(), QStringLiteral("wlan0 eth0"));
}

TEST_F(InventoryTest, WithConnectivityOnlyTheRouteCounts)
{
    addService("Ethernet", "eth0", false);
    addService("Wi-Fi", "wlan0", true);
    addService("LAN-b", "b0", true);
    tools.addPrinting(QStringLiteral("route"), "");
    net_connect = true;
    const QString interface = NetworkScanner::currentNetworkInterface();
    EXPECT_TRUE(interface.isEmpty());
    EXPECT_FALSE(interface.isNull());
}

TEST_F(InventoryTest, WithoutConnectivityNoRouteIsAskedFor)
{
    addService("Ethernet", "eth0", false);
    addService("Wi-Fi", "wlan0", true);
    addService("LAN-b", "b0", true);
    tools.addPrinting(QStringLiteral("route"), "  interface: eth9\n");
    EXPECT_EQ(NetworkScanner::currentNetworkInterface(), QStringLiteral("wlan0"));
    expectLog("");
}

TEST_F(InventoryTest, WithNothingActiveTheCurrentInterfaceIsTheEmptyText)
{
    addService("Ethernet", "eth0", false);
    const QString current = NetworkScanner::currentNetworkInterface();
    EXPECT_TRUE(current.isEmpty());
    EXPECT_FALSE(current.isNull());
}

TEST_F(InventoryTest, ServicesAreListedWithTheirAsterisks)
{
    tools.addPrinting(tool,
                      "An asterisk (*) denotes that a network service is disabled.\n"
                      "Ethernet\n*Wi-Fi\nThunderbolt Bridge\n");
    EXPECT_EQ(
        scanner.networkServices(),
        (QStringList{ethernet, QStringLiteral("*Wi-Fi"), QStringLiteral("Thunderbolt Bridge")}));
    expectLog("networksetup -listallnetworkservices\n");
    tools.addPrinting(tool, "a headline\n\n Wi-Fi \nthe end");
    EXPECT_EQ(scanner.networkServices(), (QStringList{QString(), QStringLiteral(" Wi-Fi ")}));
    for (const char *output : {"", "only a headline", "a headline\n"}) {
        tools.addPrinting(tool, output);
        EXPECT_TRUE(scanner.networkServices().isEmpty()) << output;
    }
}

TEST_F(InventoryTest, AServiceIsEnabledWhenTheToolSaysSo)
{
    const std::pair<const char *, bool> answers[] = {{"Enabled\n", true},
                                                     {"It is (Enabled).\n", true},
                                                     {"Disabled\n", false},
                                                     {"", false},
                                                     {"enabled\n", false}};
    for (const auto &[output, enabled] : answers) {
        tools.addPrinting(tool, output);
        EXPECT_EQ(scanner.isEnabledForService(ethernet), enabled) << output;
    }
    tools.clearLog();
    (void)scanner.isEnabledForService(QStringLiteral("Thunderbolt Bridge"));
    expectLog("networksetup -getnetworkserviceenabled Thunderbolt Bridge\n");
}

TEST_F(InventoryTest, TheLastAddressOfADeviceIsTaken)
{
    ENTER_NETWORK_NAMESPACE_OR_SKIP();
    ip("link add lan0 type veth peer name far0");
    EXPECT_TRUE(scanner.getIPAddressForService(QStringLiteral("lan0")).isNull());
    ip("addr add 192.168.7.2/24 dev lan0");
    ip("addr add 10.0.0.7/8 dev lan0");
    EXPECT_EQ(scanner.getIPAddressForService(QStringLiteral("lan0")), QStringLiteral("10.0.0.7"));
    EXPECT_TRUE(scanner.getIPAddressForService(QStringLiteral("lan")).isNull());
}

TEST_F(InventoryTest, TheSearchAppendsWhatIsListed)
{
    tools.addLogging(tool, R"(case $1 in
-listallhardwareports) printf '\nHardware Port: Ethernet\nDevice: lo\nEthernet Address: 02\n\nHardware Port: Wi-Fi\nDevice: wlan9\nEthernet Address: 03\n\nHardware Port: Last\nDevice: l\nEthernet Address: 04\n' ;;
*) [ "$2" = Wi-Fi ] && echo Disabled || echo Enabled ;;
esac)");
    tools.addLogging(QStringLiteral("ifconfig"), R"([ "$1" = lo ] && echo '  status: active')");
    addService("Known", "k0", false);
    scanner.searchNetworkSerices();

    const QList<NetworkService> &services = scanner.services();
    ASSERT_EQ(services.size(), 3);
    EXPECT_EQ(services[0].netType, QStringLiteral("Known"));
    EXPECT_TRUE(services[1].enabled && services[1].isActive);
    EXPECT_EQ(services[1].macAdds, QStringLiteral("02"));
    EXPECT_EQ(services[1].ipAdds, QStringLiteral("127.0.0.1"));
    EXPECT_EQ(services[2].netType, QStringLiteral("Wi-Fi"));
    EXPECT_FALSE(services[2].enabled || services[2].isActive);
    EXPECT_TRUE(services[2].ipAdds.isNull());
    expectLog(
        "networksetup -listallhardwareports |grep -A 2 'Hardware Port'|awk -F ': ' '{print $2}'\n"
        "networksetup -getnetworkserviceenabled Ethernet\n"
        "ifconfig lo |grep 'status'|awk '{print $2}'\n"
        "networksetup -getnetworkserviceenabled Wi-Fi\n"
        "ifconfig wlan9 |grep 'status'|awk '{print $2}'\n");
}

} // namespace
