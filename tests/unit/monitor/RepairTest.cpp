#include "platform/GlobalQueue.h"
#include "support/FakeTool.h"
#include "support/Waiting.h"
#include "unit/monitor/AppDelegateFixture.h"

#include <QFile>
#include <QTemporaryDir>

namespace
{

using namespace velq;
using velq::testing::waitUntil;

// There is no root daemon, and who is asked for the password dismisses the question: that every
// time shows as a pkexec in the log.
class RepairTest : public velq::testing::AppDelegateTest
{
protected:
    void SetUp() override
    {
        AppDelegateTest::SetUp();
        if (IsSkipped())
            return;
        qputenv("HOME", home.path().toLocal8Bit());
        tools.addLogging(QStringLiteral("networksetup"), "");
        tools.addLogging(QStringLiteral("ifconfig"), "");
        tools.add(QStringLiteral("pkexec"),
                  "echo asked >>'" + tools.path(QStringLiteral("log")).toLocal8Bit()
                      + "'; exit 126");
        delegate->applicationDidFinishLaunching();
    }

    // The repair waits at its first command until it is let go.
    void holdRepair() const
    {
        tools.add(QStringLiteral("networksetup"),
                  "until [ -e '" + tools.path(QStringLiteral("go")).toLocal8Bit()
                      + "' ]; do sleep 0.02; done");
    }
    void letRepairGo() const
    {
        QFile file(tools.path(QStringLiteral("go")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }

    bool repairEnds() const
    {
        return waitUntil([this] { return !delegate->monitorTimer().isNull(); });
    }

    bool showsNothing() const { return delegate->statusImage()->image() == nullptr; }
    bool showsGreen() const
    {
        return !showsNothing() && shownImage() == QStringLiteral("statusItemIconGreen");
    }

    QTemporaryDir home;
    velq::testing::FakeTools tools;
};

TEST_F(RepairTest, TheProbeStopsAndTheIconBlinks)
{
    holdRepair();
    delegate->onFixIssue(nullptr);
    EXPECT_TRUE(delegate->monitorTimer().isNull());
    ASSERT_FALSE(delegate->timer().isNull());
    EXPECT_EQ(delegate->timer()->interval(), 200);
    EXPECT_FALSE(delegate->hidden());
    EXPECT_TRUE(showsGreen());
    for (int phase = 0; phase < 2; ++phase) {
        EXPECT_TRUE(waitUntil([this] { return showsNothing() && delegate->hidden(); }));
        EXPECT_TRUE(waitUntil([this] { return showsGreen() && !delegate->hidden(); }));
    }
    EXPECT_EQ(delegate->stateMenuItem()->title(), QStringLiteral("Repairing the connection"));
    letRepairGo();
    EXPECT_TRUE(repairEnds());
}

TEST_F(RepairTest, ItEndsWithAProbeAndTheTimer)
{
    delegate->onFixIssue(nullptr);
    ASSERT_TRUE(repairEnds());
    EXPECT_TRUE(delegate->timer().isNull());
    EXPECT_FALSE(delegate->hidden());
    EXPECT_EQ(delegate->monitorTimer()->interval(), 2000);
    expectRed();
    EXPECT_EQ(delegate->stateMenuItem()->title(), QStringLiteral("No network connection"));
}

TEST_F(RepairTest, ANetworkThatIsUsableWhenItsTurnComesIsLeftAlone)
{
    connectNetwork();
    delegate->onFixIssue(nullptr);
    ASSERT_TRUE(repairEnds());
    EXPECT_EQ(tools.log(), "");
    expectGreen();
}

TEST_F(RepairTest, TheTwoServicesAreResetWhateverIsThere)
{
    delegate->onFixIssue(nullptr);
    ASSERT_TRUE(repairEnds());
    EXPECT_EQ(tools.log(),
              "networksetup -listallhardwareports |grep -A 2 'Hardware Port'|awk -F ': ' '{print "
              "$2}'\nasked\nasked\n");
}

TEST_F(RepairTest, AnswersWithoutSenseEndItToo)
{
    for (const QByteArray &output :
         {QByteArray("\xff\xfe"), QByteArray("A\nB\nC"), QByteArray(60000, '\n')}) {
        tools.addPrinting(QStringLiteral("networksetup"), output);
        delegate->onFixIssue(nullptr);
        ASSERT_TRUE(repairEnds());
        expectRed();
    }
}

TEST_F(RepairTest, ASecondOneRunsBesideTheFirstAndBothEnd)
{
    holdRepair();
    delegate->fixMenuItem()->choose();
    const auto firstBlink = delegate->timer();
    EXPECT_TRUE(delegate->fixMenuItem()->isEnabled());
    delegate->fixMenuItem()->choose();
    EXPECT_NE(delegate->timer(), firstBlink);
    EXPECT_FALSE(firstBlink.isNull());
    EXPECT_TRUE(firstBlink->isActive());
    letRepairGo();
    ASSERT_TRUE(waitUntil([&] { return firstBlink.isNull() || !firstBlink->isActive(); }));
    EXPECT_TRUE(delegate->timer().isNull());
    expectRed();
}

TEST_F(RepairTest, TheDelegateMayGoBeforeItEnds)
{
    holdRepair();
    delegate->onFixIssue(nullptr);
    delegate.reset();
    letRepairGo();
    EXPECT_TRUE(waitUntil([] { return GlobalQueue::isIdle(); }));
}

} // namespace
