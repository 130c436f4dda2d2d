#include "common/AirportOutput.h"

#include <gtest/gtest.h>

namespace
{

using namespace velq;

const QString joined = QStringLiteral("     agrCtlRSSI: -51\n"
                                      "          state: running\n"
                                      "          BSSID: 2:0:0:0:0:1\n"
                                      "           SSID: Home: upstairs\n"
                                      "            MCS: 9\n");

TEST(AirportOutputTest, OffIsOffWhateverElseItPrints)
{
    EXPECT_EQ(wifiStateFrom(QStringLiteral("AirPort: Off\n")), WifiOff);
    EXPECT_EQ(wifiStateFrom(joined + QStringLiteral(" \tAirPort \t: Off: really\n")), WifiOff);
}

TEST(AirportOutputTest, OnlyExactlyOffIsOff)
{
    for (const char *line : {"AirPort: On", "AirPort: off", "AirPort: Off ", "AirPort:  Off",
                             "AirPort: Off\r", "AirPort:Off", "Air Port: Off", "AirPort : "})
        EXPECT_EQ(wifiStateFrom(QString::fromLatin1(line)), WifiOn) << line;
}

TEST(AirportOutputTest, ANetworkWithANameIsJoined)
{
    EXPECT_EQ(wifiStateFrom(joined), WifiJoined);
    EXPECT_EQ(wifiStateFrom(QStringLiteral("SSID: a: b: c")), WifiJoined);
    EXPECT_EQ(wifiStateFrom(QStringLiteral("\u00a0SSID\u2003: caf\u00e9")), WifiJoined);
    EXPECT_EQ(wifiStateFrom(QStringLiteral("SSID:  ")), WifiJoined) << "its name is a blank";
}

TEST(AirportOutputTest, WithoutANameItIsOnlyOn)
{
    for (const char *output : {"", "\n\n", "SSID: ", "SSID: : x", "SSID:", "SSID", ": Home",
                               "ssid: Home", "BSSID: 2:0:0:0:0:1", "X: SSID: Home", "\rSSID: Home"})
        EXPECT_EQ(wifiStateFrom(QString::fromLatin1(output)), WifiOn) << output;
    EXPECT_EQ(wifiStateFrom(QString()), WifiOn);
}

TEST(AirportOutputTest, TheLastLineWithAKeyCounts)
{
    EXPECT_EQ(wifiStateFrom(QStringLiteral("SSID: Home\nSSID: \n")), WifiOn);
    EXPECT_EQ(wifiStateFrom(QStringLiteral("SSID: \n SSID : Home\n")), WifiJoined);
    EXPECT_EQ(wifiStateFrom(QStringLiteral("AirPort: Off\nAirPort: On\n")), WifiOn);
}

TEST(AirportOutputTest, OtherLineEndsArePartOfTheName)
{
    EXPECT_EQ(wifiStateFrom(QString(joined).replace(QStringLiteral("\n"), QStringLiteral("\r\n"))),
              WifiJoined);
    EXPECT_EQ(wifiStateFrom(QStringLiteral("SSID: \r\n")), WifiJoined);
}

// Cut anywhere before the network's name it is not in one, and behind that it is.
TEST(AirportOutputTest, CutOutputTellsWhatIsThere)
{
    const qsizetype name = joined.indexOf(QStringLiteral("Home"));
    for (qsizetype length = 0; length <= joined.size(); ++length)
        EXPECT_EQ(wifiStateFrom(joined.left(length)), length > name ? WifiJoined : WifiOn)
            << length;
}

TEST(AirportOutputTest, MuchOutputIsNoTrouble)
{
    const qsizetype much = qsizetype{10} << 20;
    EXPECT_EQ(wifiStateFrom(QString(much, u'x')), WifiOn);
    EXPECT_EQ(wifiStateFrom(QString(much, u':') + QStringLiteral("\nSSID: Home")), WifiJoined);
    EXPECT_EQ(
        wifiStateFrom((QString(1000, u'x') + QStringLiteral(": y\n")).repeated(10000) + joined),
        WifiJoined);
}

} // namespace
