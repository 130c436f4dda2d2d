#include "unit/appaccel/AppNetworkFixture.h"

#include <thread>

namespace
{

using namespace velq;
using namespace std::chrono_literals;

const QByteArray writesDelay =
    "defaults write com.apple.Safari WebKitInitialTimedLayoutDelay 0.25\n";
const QByteArray writesHosts = "root: chmod 777 /etc/hosts\n"
                               "root: sudo echo '192.0.2.10  accelerated.velq.example\n"
                               "198.51.100.10 accelerated.velq.example'>>/etc/hosts\n";

class AppNetworkSpeedupTest : public velq::testing::AppNetworkTest
{
protected:
    void expectUntouched(qsizetype index) const
    {
        EXPECT_TRUE(scanner.array()[index]->errorStatus().isEmpty()) << index;
    }
    void expectSlept(qsizetype times) const
    {
        EXPECT_EQ(scanner.slept, QList<std::chrono::seconds>(times, 5s));
    }
};

TEST_F(AppNetworkSpeedupTest, TheHostsLinesAreAppendedTwiceIfNeedBe)
{
    scanner.modifyHosts();
    scanner.modifyHosts();
    EXPECT_EQ(tools.log(), writesHosts + writesHosts);
}

TEST_F(AppNetworkSpeedupTest, WithoutAProblemItOnlyWaits)
{
    scanner.speedup();
    EXPECT_EQ(tools.log(), "");
    expectSlept(1);
    for (qsizetype index = 0; index < 4; ++index)
        expectUntouched(index);
}

TEST_F(AppNetworkSpeedupTest, SafariGetsItsDelay)
{
    scanner.setErrorStatus(1);
    scanner.speedup();
    EXPECT_EQ(tools.log(), writesDelay);
    expectItem(0, true);
    expectUntouched(1);
    expectSlept(1);
}

TEST_F(AppNetworkSpeedupTest, TheHostsGetTheirLines)
{
    scanner.setErrorStatus(16);
    scanner.speedup();
    EXPECT_EQ(tools.log(), writesHosts);
    expectUntouched(0);
    for (qsizetype index = 1; index < 4; ++index)
        expectItem(index, true);
    expectSlept(1);
}

TEST_F(AppNetworkSpeedupTest, BothInTheirOrderAndNobodyIsTold)
{
    setDelay("");
    setHosts("");
    scanner.scan();
    tools.clearLog();
    delegate.told.clear();
    scanner.speedup();
    EXPECT_EQ(tools.log(), writesDelay + writesHosts) << "and no scan";
    for (qsizetype index = 0; index < 4; ++index)
        expectItem(index, true);
    EXPECT_TRUE(delegate.told.isEmpty());
    EXPECT_EQ(scanner.errorStatus(), 17) << "as the scan has left it";
    scanner.speedup();
    EXPECT_EQ(tools.log(), writesDelay + writesHosts + writesDelay + writesHosts);
    expectSlept(2);
}

TEST_F(AppNetworkSpeedupTest, WhatTheToolsSayChangesNothing)
{
    tools.addLogging(QStringLiteral("defaults"), "exit 1");
    setHosts("no");
    scanner.setErrorStatus(17);
    scanner.speedup();
    for (qsizetype index = 0; index < 4; ++index)
        expectItem(index, true);
}

TEST_F(AppNetworkSpeedupTest, StoppedBeforeItDoesNothing)
{
    scanner.setErrorStatus(17);
    std::thread([this] { scanner.stopSpeedup(); }).join();
    scanner.speedup();
    EXPECT_EQ(tools.log(), "");
    expectSlept(0);
    scanner.setStopFixFlag(false);
    scanner.speedup();
    expectSlept(1);
}

TEST_F(AppNetworkSpeedupTest, StoppedDuringSafariItLeavesTheHosts)
{
    tools.addLogging(QStringLiteral("defaults"),
                     "while [ -e '" + tools.path(QStringLiteral("hold")).toLocal8Bit()
                         + "' ]; do sleep 0.01; done");
    scanner.setErrorStatus(17);
    rootDaemon->during(
        "defaults write", [this] { scanner.speedup(); }, [this] { scanner.stopSpeedup(); });
    EXPECT_EQ(tools.log(), writesDelay);
    expectItem(0, true);
    expectUntouched(1);
    expectSlept(0);
}

TEST_F(AppNetworkSpeedupTest, StoppedDuringTheHostsItWaitsAllTheSame)
{
    scanner.setErrorStatus(16);
    rootDaemon->during(
        "root: chmod", [this] { scanner.speedup(); }, [this] { scanner.stopSpeedup(); });
    EXPECT_EQ(tools.log(), writesHosts);
    expectItem(3, true);
    expectSlept(1);
}

TEST_F(AppNetworkSpeedupTest, TheProductReallyWaits)
{
    const auto begin = std::chrono::steady_clock::now();
    AppNetworkScanner::shareScanner().speedup();
    EXPECT_GE(std::chrono::steady_clock::now() - begin, 5s);
}

} // namespace
