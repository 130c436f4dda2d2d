#include "nettools/networksetup/KioConfiguration.h"

#include <gtest/gtest.h>

namespace
{

using velq::nettools::KioConfiguration;

constexpr const char *text = "# by hand\n"
                             "Timeout=10\n"
                             "\n"
                             "[Proxy Settings]\n"
                             "NoProxyFor=localhost, 10.0.0.0/8\n"
                             "#httpProxy=http://comment 1\n"
                             "httpProxy[$e]=http://old 1\n"
                             " ProxyType = 1 \r\n"
                             "\n"
                             "[Other]\n"
                             "httpProxy=http://other 2\n";

std::string afterSetting(const char *before, const char *key, const char *value)
{
    KioConfiguration configuration(before);
    configuration.set(key, value);
    return configuration.text();
}

std::string withReplaced(const std::string &before, const std::string &after)
{
    std::string all = text;
    return all.replace(all.find(before), before.size(), after);
}

TEST(KioConfigurationTest, ReadsTheOneGroup)
{
    const KioConfiguration configuration(text);
    EXPECT_EQ(configuration.value("httpProxy"), "http://old 1");
    EXPECT_EQ(configuration.value("ProxyType"), "1");
    EXPECT_EQ(configuration.value("NoProxyFor"), "localhost, 10.0.0.0/8");
    EXPECT_EQ(configuration.value("Timeout"), "");
    EXPECT_EQ(configuration.value("httpsProxy"), "");
    EXPECT_EQ(KioConfiguration("").value("httpProxy"), "");
}

TEST(KioConfigurationTest, TheLastOfTwoCounts)
{
    constexpr const char *twice = "[Proxy Settings]\na=1\n[B]\na=2\n[Proxy Settings]\na=3\n[C]\n";
    EXPECT_EQ(KioConfiguration(twice).value("a"), "3");
    EXPECT_EQ(afterSetting(twice, "a", "4"),
              "[Proxy Settings]\na=1\n[B]\na=2\n[Proxy Settings]\na=4\n[C]\n");
}

TEST(KioConfigurationTest, WhatIsNotSetStaysToTheByte)
{
    EXPECT_EQ(KioConfiguration(text).text(), text);
    EXPECT_EQ(afterSetting(text, "httpProxy", "http://new 3"),
              withReplaced("httpProxy[$e]=http://old 1\n", "httpProxy=http://new 3\n"));
    EXPECT_EQ(afterSetting(text, "ftpProxy", "http://f 4"),
              withReplaced(" ProxyType = 1 \r\n", " ProxyType = 1 \r\nftpProxy=http://f 4\n"));
}

TEST(KioConfigurationTest, TheGroupIsMadeWhenItIsMissing)
{
    EXPECT_EQ(afterSetting("", "a", "1"), "[Proxy Settings]\na=1\n");
    EXPECT_EQ(afterSetting("[B]\nb=2", "a", "1"), "[B]\nb=2\n\n[Proxy Settings]\na=1\n");
    EXPECT_EQ(afterSetting("[Proxy Settings]\n\n[B]\n", "a", "1"),
              "[Proxy Settings]\na=1\n\n[B]\n");
    EXPECT_EQ(afterSetting("[Proxy Settings]", "a", "1"), "[Proxy Settings]\na=1\n");
}

} // namespace
