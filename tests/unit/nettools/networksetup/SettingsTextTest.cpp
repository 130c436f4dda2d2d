#include "nettools/networksetup/SettingsText.h"

#include <gtest/gtest.h>

namespace
{

using velq::nettools::quotedSetting;
using velq::nettools::settingsIn;
using velq::nettools::unquotedSetting;

TEST(SettingsTextTest, AValueIsAllThatStandsBehindItsKey)
{
    const auto settings = settingsIn("a.b mode 'none'\na.b ignore-hosts ['x', 'y z']\na.c port 80");
    EXPECT_EQ(settings.size(), 3U);
    EXPECT_EQ(settings.at("a.b mode"), "'none'");
    EXPECT_EQ(settings.at("a.b ignore-hosts"), "['x', 'y z']");
    EXPECT_EQ(settings.at("a.c port"), "80");
}

TEST(SettingsTextTest, LinesThatAreCutSayNothing)
{
    EXPECT_TRUE(settingsIn("").empty());
    EXPECT_TRUE(settingsIn("\n\na.b\na.b mode\n").empty());
}

TEST(SettingsTextTest, TextsStandInQuotes)
{
    EXPECT_EQ(unquotedSetting("'proxy.example'"), "proxy.example");
    EXPECT_EQ(unquotedSetting("\"it's\""), "it's");
    EXPECT_EQ(unquotedSetting(R"('a\'b\\c')"), R"(a'b\c)");
    for (const char *none : {"", "'", "80", "'a", "a'", "'a\""})
        EXPECT_EQ(unquotedSetting(none), "") << none;
    for (const char *text : {"", "proxy.example", "it's", R"(a\b')", "\"", "fd00::1"})
        EXPECT_EQ(unquotedSetting(quotedSetting(text)), text);
}

} // namespace
