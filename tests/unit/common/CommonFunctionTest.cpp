#include "common/CommonFunction.h"

#include "common/Reachability.h"
#include "support/FakeTool.h"
#include "support/NetworkNamespace.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{

using namespace velq;

class WifiTest : public ::testing::Test
{
protected:
    int stateFrom(const QByteArray &output) const
    {
        tools.addPrinting(QStringLiteral("airport"), output);
        return CommonFunction::wifiEnable();
    }

    velq::testing::FakeTools tools;
};

TEST_F(WifiTest, IsWhatTheToolSays)
{
    EXPECT_EQ(stateFrom("AirPort: Off\n"), 0);
    EXPECT_EQ(stateFrom("     SSID: \n"), 1);
    EXPECT_EQ(stateFrom("     SSID: Home: upstairs\n"), 2);
}

TEST_F(WifiTest, TheToolIsAskedForItsInformation)
{
    (void)stateFrom("");
    EXPECT_EQ(tools.log(), "airport -I\n");
}

TEST_F(WifiTest, WithoutAnAnswerItIsOn)
{
    EXPECT_EQ(stateFrom(""), 1);
    EXPECT_EQ(stateFrom("\xff\xfe\nSSID: Home\n"), 1) << "not UTF-8";
}

TEST_F(WifiTest, WithoutTheToolItIsOn)
{
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    EXPECT_EQ(CommonFunction::wifiEnable(), 1);
    qputenv("PATH", path);
}

TEST_F(WifiTest, TheOutputIsReadWhenTheToolHasEnded)
{
    tools.add(QStringLiteral("airport"), "printf 'SSID: '; printf 'Home\\n'; printf 'x: y\\n'");
    EXPECT_EQ(CommonFunction::wifiEnable(), 2);
    EXPECT_EQ(stateFrom(QByteArray(60000, 'x') + "\nSSID: Home\n"), 2);
}

TEST(CommonFunctionTest, WithoutAWayThereIsNoInternet)
{
    ENTER_NETWORK_NAMESPACE_OR_SKIP();
    EXPECT_FALSE(CommonFunction::connectedToInternet());
}

TEST(CommonFunctionTest, ThePathLiesInTheHomeFolder)
{
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", "/home/some one");
    const std::pair<const char *, const char *> paths[] = {
        {"Library/Caches", "/home/some one/Library/Caches"},
        {"/Library//Caches/", "/home/some one/Library/Caches"},
        {"a b", "/home/some one/a b"},
        {"../x", "/home/some one/../x"},
        {"", "/home/some one"},
        {"/", "/home/some one"}};
    for (const auto &[below, whole] : paths)
        EXPECT_EQ(CommonFunction::getHomePathByAppendSubPath(QString::fromLatin1(below)),
                  QString::fromLatin1(whole));
    EXPECT_EQ(CommonFunction::getHomePathByAppendSubPath({}), QStringLiteral("/home/some one"));
    qputenv("HOME", "/");
    EXPECT_EQ(CommonFunction::getHomePathByAppendSubPath(QStringLiteral("Library/Caches")),
              QStringLiteral("/Library/Caches"));
    EXPECT_EQ(CommonFunction::getHomePathByAppendSubPath({}), QStringLiteral("/"));
    qputenv("HOME", home);
}

TEST(CommonFunctionTest, WebRequestsHaveANameOfTheirOwn)
{
    EXPECT_EQ(CommonFunction::getProjectNameForHttpRequest(), QStringLiteral("velqmac"));
}

} // namespace
