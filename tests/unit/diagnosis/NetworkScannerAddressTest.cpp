#include "support/NetworkNamespace.h"
#include "unit/diagnosis/DiagnosisFixture.h"

namespace
{

using namespace velq;
using velq::testing::ip;

class AddressTest : public velq::testing::DiagnosisTest
{
protected:
    AddressTest()
    {
        shared.setServices({service(QStringLiteral("Ethernet"), QStringLiteral("lo"))});
    }

    bool isWrong(const QByteArray &gateway, const QByteArray &netmask)
    {
        computer.gateway = gateway;
        computer.netmask = netmask;
        computer.install(tools);
        return shared.checkIPIsWrong();
    }

    void expectLog(const QByteArray &lines) const { EXPECT_EQ(tools.log(), lines); }
};

// The rows' addresses are given to a device of a network of the test's own.
TEST_F(AddressTest, AnAddressIsRightInTheGatewaysNetworkOnly)
{
    ENTER_NETWORK_NAMESPACE_OR_SKIP();
    ip("link add lan0 type veth peer name far0");
    shared.setServices({service(QStringLiteral("Ethernet"), QStringLiteral("lan0"))});
    const struct {
        std::string address;
        QByteArray gateway;
        QByteArray netmask;
        bool wrong;
    } rows[] = {{"192.168.1.23", "192.168.1.1", "0xffffff00", false},
                {"192.168.2.23", "192.168.1.1", "0xffffff00", true},
                {"192.168.2.23", "192.168.1.1", "0xffff0000", false},
                {"169.254.7.9", "192.168.1.1", "0xffff0000", true},
                {"169.254.7.9", "192.168.1.1", "0xffffffff", false},
                {"10.0.0.7", "192.168.1.1", "0x00000000", false},
                {"10.0.0.130", "10.0.0.1", "0xffffff80", false},
                {"10.0.0.7", "10.0.0.1.5", "0xffffffff", false},
                {"10.1.2.7", "10.2.2.1", "0xff00ff00", false},
                {"10.0.0.7", "010.0.0.1", "0xff000000", true},
                {"10.0.0.7", "10x0x0x1", "0xffffff00", true},
                {"10.0.0.7", "10.0.0.1", "0xffffff000xffffff00", false}};
    for (const auto &row : rows) {
        ip("addr flush dev lan0");
        ip("addr add " + row.address + "/32 dev lan0");
        EXPECT_EQ(isWrong(row.gateway, row.netmask), row.wrong)
            << row.address << ' ' << row.gateway.toStdString() << ' ' << row.netmask.toStdString();
    }
}

TEST_F(AddressTest, AMissingGatewayOrAddressIsWrong)
{
    EXPECT_FALSE(isWrong("127.0.0.254", "0xff000000"));
    EXPECT_TRUE(isWrong("link#4", "0xff000000"));
    EXPECT_TRUE(isWrong("", "0xff000000"));
    shared.setServices({service(QStringLiteral("Ethernet"), QStringLiteral("none0"))});
    EXPECT_TRUE(isWrong("127.0.0.254", "0xff000000"));
    shared.setServices({});
    EXPECT_TRUE(isWrong("127.0.0.254", "0xffffffff"));
}

// Text that is no text at all is missing; no mask is a mask that sets nothing apart.
TEST_F(AddressTest, OnlyAnAbsentMaskIsMissing)
{
    EXPECT_FALSE(isWrong("127.0.0.254", ""));
    // Elsewhere, grep would not let it through.
    qputenv("LC_ALL", "C");
    EXPECT_TRUE(isWrong("127.0.0.254", "\xff\xfe"));
}

TEST_F(AddressTest, TheCommandLinesAreExact)
{
    EXPECT_FALSE(isWrong("127.0.0.254", "0xff000000"));
    expectLog("route get default | grep gateway | awk '{print $2}'\n"
              "route get default | grep interface | awk '{print $2}'\n"
              "ifconfig lo | grep netmask | awk '{print $4}'\n");
}

TEST_F(AddressTest, TheGatewayIsAnyTextWithFourNumbers)
{
    const std::pair<const char *, const char *> answers[] = {
        {"    gateway: 192.168.1.1\n", "192.168.1.1"},
        {"    gateway: a10-20-30-40z\n", "a10-20-30-40z"},
        {"    gateway: 10.0.0.1\n    gateway: 10.0.0.2\n", "10.0.0.110.0.0.2"},
        {"    gateway: 1234567\n", "1234567"}};
    for (const auto &[output, gateway] : answers) {
        tools.addPrinting(QStringLiteral("route"), output);
        EXPECT_EQ(shared.getRouteAddress(), QString::fromLatin1(gateway));
    }
    for (const char *output : {"    gateway: link#4\n", "    gateway: 123456\n", "",
                               "    gateway: fe80::1\n", "route: writing to routing socket\n"}) {
        tools.addPrinting(QStringLiteral("route"), output);
        EXPECT_TRUE(shared.getRouteAddress().isNull()) << output;
    }
}

TEST_F(AddressTest, TheNetmaskIsThatOfTheDefaultRoutesDevice)
{
    tools.addPrinting(QStringLiteral("route"), "  interface: lan0\n      flags: <UP>\n");
    tools.addPrinting(QStringLiteral("ifconfig"),
                      "\tinet 10.0.0.7 netmask 0xffffff00 broadcast 10.0.0.255\n");
    EXPECT_EQ(shared.getNetmask(), QStringLiteral("ffffff00"));
    tools.addPrinting(QStringLiteral("ifconfig"),
                      "\tinet 10.0.0.7 netmask 0xffffff00\n\tinet 10.0.1.7 netmask 0xffff0000\n");
    tools.clearLog();
    EXPECT_EQ(shared.getNetmask(), QStringLiteral("ffffff00ffff0000"));
    expectLog("route get default | grep interface | awk '{print $2}'\n"
              "ifconfig lan0 | grep netmask | awk '{print $4}'\n");
}

// What comes together only when the lines do is no prefix any more.
TEST_F(AddressTest, ThePrefixesGoBeforeTheLinesAreJoined)
{
    tools.addPrinting(QStringLiteral("route"), "  interface: lan0\n");
    tools.addPrinting(QStringLiteral("ifconfig"),
                      "\tinet 10.0.0.7 netmask 0xff0\n\tinet 10.0.1.7 netmask xff\n");
    EXPECT_EQ(shared.getNetmask(), QStringLiteral("ff0xff"));
}

TEST_F(AddressTest, WithoutADefaultRouteTheDevicesNameIsEmpty)
{
    tools.addPrinting(QStringLiteral("route"), "");
    tools.addPrinting(QStringLiteral("ifconfig"), "");
    const QString mask = shared.getNetmask();
    EXPECT_TRUE(mask.isEmpty() && !mask.isNull());
    expectLog("route get default | grep interface | awk '{print $2}'\n"
              "ifconfig  | grep netmask | awk '{print $4}'\n");
}

TEST_F(AddressTest, AServiceMayHaveARouter)
{
    shared.setServices({service(QStringLiteral("Ethernet"), QStringLiteral("lo")),
                        service(QStringLiteral("Wi-Fi"), QStringLiteral("wlan0")),
                        service(QStringLiteral("Third"), QStringLiteral("t0"))});
    const auto answers = [&](const QByteArray &wifi) {
        tools.addLogging(QStringLiteral("networksetup"),
                         "[ $2 = Wi-Fi ] && printf '" + wifi + "' || echo 'Router: none'");
        return shared.hasRouterIP();
    };
    EXPECT_TRUE(answers("IP address: 10.0.0.7\\nRouter: 10.0.0.1\\n"));
    EXPECT_FALSE(answers("IP address: 10.0.0.7\\nRouter: none\\n"));
    EXPECT_FALSE(answers("Router: \\n"));
    EXPECT_TRUE(answers("Router: none\\nRouter: 10.0.0.1\\n"));
    EXPECT_FALSE(answers(""));
}

TEST_F(AddressTest, TheFirstRouterEndsTheSearch)
{
    shared.setServices({service(QStringLiteral("Ethernet"), QStringLiteral("lo")),
                        service(QStringLiteral("Wi-Fi"), QStringLiteral("wlan0"))});
    shared.services().first().name = QStringLiteral("LAN");
    tools.addPrinting(QStringLiteral("networksetup"), "Router: 10.0.0.1\n");
    EXPECT_TRUE(shared.hasRouterIP());
    expectLog("networksetup -getinfo Ethernet|grep 'Router:'|awk -F': ' '{print $2}'\n");
    shared.setServices({});
    EXPECT_FALSE(shared.hasRouterIP());
}

TEST_F(AddressTest, OnlyTheAbsenceOfServersIsAnError)
{
    const std::pair<const char *, bool> answers[] = {
        {";; connection timed out; no servers could be reached\n", true},
        {"** server can't find www.iana.org: NXDOMAIN\n", false},
        {";; connection timed out\n", false},
        {"No servers\n", false},
        {"Name:\twww.iana.org\nAddress: 192.0.2.1\n", false},
        {"", false}};
    for (const auto &[output, error] : answers) {
        tools.addPrinting(QStringLiteral("nslookup"), output);
        EXPECT_EQ(shared.isDNSServiceError(), error) << output;
    }
    tools.clearLog();
    (void)shared.isDNSServiceError();
    expectLog("nslookup www.iana.org\n");
}

} // namespace
