#include "devices/DeviceList.h"

#include <gtest/gtest.h>

namespace
{

using velq::DeviceData;
using velq::devicesFromAddressCache;
using velq::devicesFromRoutingTable;

QList<DeviceData> routed(const char *text)
{
    return devicesFromRoutingTable(QString::fromUtf8(text));
}

QList<DeviceData> cached(const char *text)
{
    return devicesFromAddressCache(QString::fromUtf8(text));
}

DeviceData device(const char *ip, const char *macAddress)
{
    return {QString::fromLatin1(ip), QString::fromLatin1(macAddress)};
}

TEST(RoutingTableTest, AHostRowIsADevice)
{
    EXPECT_EQ(routed("192.168.1.1        aa:bb:cc:dd:ee:ff  UHLWIir  en0   1180\n"),
              QList{device("192.168.1.1", "aa:bb:cc:dd:ee:ff")});
}

TEST(RoutingTableTest, NetworksBroadcastsAndLinksAreNone)
{
    EXPECT_TRUE(routed("192.168.1  link#4  UCS  en0\n").isEmpty());
    EXPECT_TRUE(routed("192.168.1  aa:bb:cc:dd:ee:ff  UCS  en0\n").isEmpty());
    EXPECT_TRUE(routed("192.168.1.255  ff:ff:ff:ff:ff:ff  UHLWbI  en0\n").isEmpty());
    EXPECT_TRUE(routed("192.168.1.7  link#4  UHLWI  en0\n").isEmpty());
    EXPECT_TRUE(routed("192.168.1.5  127.0.0.1  UHS  lo0\n").isEmpty());
}

TEST(RoutingTableTest, AGatewayThatOnlyResemblesTheseIsADevices)
{
    for (const char *gateway : {"127.0.0.10", "1127.0.0.1", "en0link#4", "Link#4", "link",
                                "FF:FF:FF:FF:FF:FF", "ff:ff:ff:ff:ff:ff:ff"}) {
        const QByteArray row = QByteArray("192.168.1.7  ") + gateway + "  UHLWI  en0\n";
        EXPECT_EQ(routed(row.constData()), QList{device("192.168.1.7", gateway)});
    }
}

TEST(RoutingTableTest, TheRangeMayStandAnywhereInFourParts)
{
    EXPECT_EQ(routed("10.192.168.3 a:b:c:d:e:f U\n"), QList{device("10.192.168.3", "a:b:c:d:e:f")});
    EXPECT_TRUE(routed("10.0.0.3 a:b:c:d:e:f U\n").isEmpty());
    EXPECT_TRUE(routed("192.168.1.0/25 a:b:c:d:e:f U\n")
                == QList{device("192.168.1.0/25", "a:b:c:d:e:f")});
    EXPECT_TRUE(routed("192.168.1.1.1 a:b:c:d:e:f U\n").isEmpty());
}

TEST(RoutingTableTest, EachPairOfAddressesCountsOnce)
{
    EXPECT_EQ(routed("192.168.1.1 a:b:c:d:e:f U en0\n192.168.1.1 a:b:c:d:e:f U en1\n").size(), 1);
    EXPECT_EQ(routed("192.168.1.1 a:b:c:d:e:f U\n192.168.1.1 a:b:c:d:e:0 U\n").size(), 2);
    EXPECT_EQ(routed("192.168.1.1 a:b:c:d:e:f U\n192.168.1.2 a:b:c:d:e:f U\n").size(), 2);
}

TEST(RoutingTableTest, KeepsTheToolsOrder)
{
    EXPECT_EQ(routed("192.168.1.9 a:b:c:d:e:1 U\n192.168.1.3 a:b:c:d:e:0 U\n"),
              (QList{device("192.168.1.9", "a:b:c:d:e:1"), device("192.168.1.3", "a:b:c:d:e:0")}));
}

TEST(RoutingTableTest, NothingAndNonsenseAreEmptyLists)
{
    EXPECT_TRUE(routed("").isEmpty());
    EXPECT_TRUE(devicesFromRoutingTable(QString()).isEmpty());
    EXPECT_TRUE(routed("Routing tables\n\nInternet:\n192.168.1.1\n   \n").isEmpty());
    EXPECT_TRUE(routed("192.168.1.1\tlink#4\n").isEmpty());
}

TEST(AddressCacheTest, ANamelessHostIsADevice)
{
    EXPECT_EQ(cached("? (192.168.1.1) at aa:bb:cc:dd:ee:ff on en0 ifscope [ethernet]\n"),
              QList{device("192.168.1.1", "aa:bb:cc:dd:ee:ff")});
}

TEST(AddressCacheTest, EveryMarkOfANamelessHostGoes)
{
    EXPECT_EQ(cached("? (? (192.168.1.1) at a:b? (:c on en0\n"),
              QList{device("192.168.1.1", "a:b:c")});
}

TEST(AddressCacheTest, ANameStaysInTheAddress)
{
    EXPECT_EQ(cached("router.lan (192.168.1.1) at a:b:c:d:e:f on en0\n"),
              QList{device("router.lan (192.168.1.1", "a:b:c:d:e:f")});
}

TEST(AddressCacheTest, TheFirstOfEachMarkCuts)
{
    EXPECT_EQ(cached("? (192.168.1.1) at a:b on en0) at c:d on en1\n"),
              QList{device("192.168.1.1", "a:b")});
}

TEST(AddressCacheTest, IncompleteAndBroadcastEntriesAreKept)
{
    EXPECT_EQ(cached("? (192.168.1.9) at (incomplete) on en0 ifscope [ethernet]\n"),
              QList{device("192.168.1.9", "(incomplete)")});
    EXPECT_EQ(cached("? (192.168.1.255) at ff:ff:ff:ff:ff:ff on en0\n").size(), 1);
}

TEST(AddressCacheTest, OtherLinesAndOtherRangesAreNone)
{
    EXPECT_TRUE(cached("").isEmpty());
    EXPECT_TRUE(cached("? (192.168.1.1) at a:b:c:d:e:f\n").isEmpty());
    EXPECT_TRUE(cached("? (192.168.1.1 a:b:c:d:e:f on en0\n").isEmpty());
    EXPECT_TRUE(cached("? (10.0.0.1) at a:b:c:d:e:f on en0\n").isEmpty());
    EXPECT_TRUE(cached(" on ) at 192.168\n").isEmpty());
}

TEST(AddressCacheTest, EachPairOfAddressesCountsOnce)
{
    EXPECT_EQ(
        cached("? (192.168.1.1) at a:b:c:d:e:f on en0\n? (192.168.1.1) at a:b:c:d:e:f on en1\n")
            .size(),
        1);
}

TEST(DeviceDataTest, OrdersByHardwareAddressAlone)
{
    const DeviceData a = device("192.168.1.9", "a:0");
    const DeviceData b = device("192.168.1.1", "b:0");
    EXPECT_LT(a.compare(b), 0);
    EXPECT_GT(b.compare(a), 0);
    EXPECT_EQ(a.compare(device("10.0.0.1", "a:0")), 0);
}

} // namespace
