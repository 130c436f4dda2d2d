#include "diagnosis/HardwarePorts.h"

#include "support/FakeTool.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;

const QByteArray threePorts = "\nHardware Port: Ethernet\nDevice: eth0\n"
                              "Ethernet Address: 02:00:00:00:00:01\n"
                              "\nHardware Port: Wi-Fi\nDevice: wlan0\n"
                              "Ethernet Address: 02:00:00:00:00:02\n"
                              "\nHardware Port: Loopback\nDevice: lo\n"
                              "Ethernet Address: 00:00:00:00:00:00\n";

QStringList devicesOf(const QList<NetworkService> &ports)
{
    QStringList devices;
    for (const NetworkService &port : ports)
        devices.append(port.interface);
    return devices;
}

class HardwarePortsTest : public ::testing::Test
{
protected:
    QList<NetworkService> portsFromTool(const QByteArray &output) const
    {
        tools.addPrinting(QStringLiteral("networksetup"), output);
        return hardwarePorts();
    }

    velq::testing::FakeTools tools;
};

TEST_F(HardwarePortsTest, EachHasItsNameDeviceAndAddress)
{
    const QList<NetworkService> ports = portsFromTool(threePorts);
    ASSERT_EQ(ports.size(), 2);
    EXPECT_EQ(ports[0].netType, QStringLiteral("Ethernet"));
    EXPECT_EQ(ports[0].name, QStringLiteral("Ethernet"));
    EXPECT_EQ(ports[0].interface, QStringLiteral("eth0"));
    EXPECT_EQ(ports[0].macAdds, QStringLiteral("02:00:00:00:00:01"));
    EXPECT_TRUE(ports[0].ipAdds.isNull());
    EXPECT_FALSE(ports[0].enabled || ports[0].isActive);
    EXPECT_EQ(ports[1].netType, QStringLiteral("Wi-Fi"));
}

TEST_F(HardwarePortsTest, TheCommandLineIsExact)
{
    (void)portsFromTool(threePorts);
    EXPECT_EQ(tools.log(),
              "networksetup -listallhardwareports |grep -A 2 'Hardware Port'|awk -F ': ' '{print "
              "$2}'\n");
}

TEST_F(HardwarePortsTest, TheLastOneListedIsNeverThere)
{
    EXPECT_EQ(devicesOf(portsFromTool(threePorts)),
              (QStringList{QStringLiteral("eth0"), QStringLiteral("wlan0")}));
    EXPECT_TRUE(
        portsFromTool("\nHardware Port: Ethernet\nDevice: eth0\nEthernet Address: 02\n").isEmpty());
}

TEST(HardwarePortsText, APieceOfAnotherNumberOfLinesIsSkipped)
{
    EXPECT_EQ(devicesOf(hardwarePortsFrom(QStringLiteral("A\na0\n\nB\nb0\n02\n\nC\nc0\n02\nx\n\n"
                                                         "D\nd0\n02\n\nE\ne0\n02\n"))),
              (QStringList{QStringLiteral("b0"), QStringLiteral("d0")}));
}

TEST(HardwarePortsText, OtherTextHasNoPorts)
{
    for (const QString &text :
         {QString(), QStringLiteral(""), QStringLiteral("\n"), QStringLiteral("\n\n\n\n"),
          QStringLiteral("Ethernet\r\neth0\r\n02\r\n\r\nWi-Fi\r\nwlan0\r\n02\r\n"),
          QString(qsizetype{10} * 1024 * 1024, u'x')})
        EXPECT_TRUE(hardwarePortsFrom(text).isEmpty());
}

// Cut anywhere, there may be fewer ports, but never one that is not there.
TEST_F(HardwarePortsTest, CutOutputHasOnlyWholePorts)
{
    const QString whole =
        QStringLiteral("Ethernet\neth0\n02:00\n\nWi-Fi\nwlan0\n02:01\n\nLo\nlo\n0\n");
    const QList<NetworkService> all = hardwarePortsFrom(whole);
    for (qsizetype length = 0; length < whole.size(); ++length) {
        const QList<NetworkService> ports = hardwarePortsFrom(whole.left(length));
        EXPECT_LE(ports.size(), all.size() + 1);
        for (qsizetype i = 0; i + 1 < ports.size(); ++i)
            EXPECT_EQ(ports[i], all[i]);
    }
}

} // namespace
