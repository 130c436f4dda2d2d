#include "monitor/AppDelegate.h"

#include "common/NotificationCenter.h"
#include "common/Reachability.h"
#include "monitor/MenuInterface.h"
#include "support/Waiting.h"
#include "unit/monitor/AppDelegateFixture.h"

namespace
{

using namespace velq;
using velq::testing::AppDelegateTest;
using velq::testing::ip;
using velq::testing::waitUntil;

TEST_F(AppDelegateTest, StartUpBuildsEverything)
{
    connectNetwork();
    delegate->applicationDidFinishLaunching();
    ASSERT_NE(delegate->scanner(), nullptr);
    EXPECT_FALSE(delegate->scanner()->timer().isNull());
    ASSERT_EQ(statusBar.items.size(), 1);
    EXPECT_EQ(statusBar.lengths, QList<double>{-1});
    EXPECT_EQ(statusBar.items[0]->view(), delegate->imageView());
    EXPECT_EQ(delegate->menButton()->menu(), delegate->mainMenu());
    ASSERT_FALSE(delegate->monitorTimer().isNull());
    EXPECT_EQ(delegate->monitorTimer()->interval(), 2000);
    EXPECT_TRUE(delegate->timer().isNull());
    expectGreen();
}

TEST_F(AppDelegateTest, TheDeviceWatchRunsBeforeTheItemAndTheTimerAfterIt)
{
    bool asked = false;
    statusBar.onItem = [&] {
        asked = true;
        ASSERT_NE(delegate->scanner(), nullptr);
        EXPECT_FALSE(delegate->scanner()->timer().isNull());
        EXPECT_TRUE(delegate->monitorTimer().isNull());
        EXPECT_EQ(delegate->statusImage()->image(), nullptr);
    };
    delegate->applicationDidFinishLaunching();
    EXPECT_TRUE(asked);
}

TEST_F(AppDelegateTest, ANetworkThatIsDownAtLaunchIsRedBeforeTheFirstTick)
{
    delegate->applicationDidFinishLaunching();
    expectRed();
}

TEST_F(AppDelegateTest, TheFirstProbeComesBeforeTheSwitchAndTheTimer)
{
    bool probed = false;
    QObject::connect(delegate->fixMenuItem(), &MenuItem::changed, delegate.get(), [&] {
        probed = true;
        EXPECT_TRUE(delegate->monitorTimer().isNull());
        Q_EMIT distributed->posted(QStringLiteral("MonitorStart"), QStringLiteral("NO"));
        EXPECT_FALSE(delegate->scanner()->timer().isNull());
    });
    delegate->applicationDidFinishLaunching();
    EXPECT_TRUE(probed);
}

TEST_F(AppDelegateTest, TheNormalIconIsInNoViewByItself)
{
    delegate->addStatusItem();
    EXPECT_EQ(delegate->iconImage()->image(), nullptr);
}

TEST_F(AppDelegateTest, TheBlinkingBeginsAndEndsGreenInWhateverPhase)
{
    delegate->setHidden(true);
    delegate->startAnimi();
    EXPECT_FALSE(delegate->hidden());
    EXPECT_EQ(shownImage(), QStringLiteral("statusItemIconGreen"));
    delegate->animi();
    EXPECT_TRUE(delegate->hidden());
    EXPECT_EQ(delegate->statusImage()->image(), nullptr);
    delegate->endAnimi();
    EXPECT_FALSE(delegate->hidden());
    EXPECT_EQ(shownImage(), QStringLiteral("statusItemIconGreen"));
    EXPECT_TRUE(delegate->timer().isNull());
}

TEST_F(AppDelegateTest, ASecondStatusItemIsNotMade)
{
    delegate->addStatusItem();
    delegate->addStatusItem();
    EXPECT_EQ(statusBar.items.size(), 1);
    EXPECT_EQ(shownImage(), QStringLiteral("statusItemIconGreen"));
}

TEST_F(AppDelegateTest, NewerThan10_9)
{
    const auto after = [this](int major, int minor) {
        makeDelegate({major, minor, 0});
        return delegate->osVersionAfter10_9();
    };
    EXPECT_FALSE(after(10, 9));
    EXPECT_FALSE(after(10, 0));
    EXPECT_FALSE(after(0, 0));
    EXPECT_TRUE(after(10, 10));
    EXPECT_TRUE(after(11, 0));
    EXPECT_TRUE(after(12, 0));
    EXPECT_TRUE(after(9, 10));
}

TEST_F(AppDelegateTest, TheNormalIconIsATemplateOnNewerSystemsOnly)
{
    const auto normal = Image::imageNamed(QStringLiteral("statusItemIconNormal"));
    ASSERT_NE(normal, nullptr);
    const auto isTemplateOn = [&](int major, int minor) {
        normal->setTemplate(false);
        makeDelegate({major, minor, 0});
        delegate->addStatusItem();
        return normal->isTemplate();
    };
    EXPECT_FALSE(isTemplateOn(10, 9));
    EXPECT_TRUE(isTemplateOn(10, 10));
    EXPECT_TRUE(isTemplateOn(11, 0));
}

TEST_F(AppDelegateTest, TheProbeArmsAndDisarmsTheRepair)
{
    connectNetwork();
    delegate->monitorStatus();
    expectGreen();
    delegate->monitorStatus();
    expectGreen();
    disconnectNetwork();
    delegate->monitorStatus();
    expectRed();
    delegate->monitorStatus();
    expectRed();
    connectNetwork();
    delegate->monitorStatus();
    expectGreen();
}

TEST_F(AppDelegateTest, TheStateStandsInWordsInTheMenuAndOnTheItem)
{
    delegate->addStatusItem();
    delegate->monitorStatus();
    const MenuItem *first = delegate->mainMenu()->items().first();
    EXPECT_EQ(first, delegate->stateMenuItem());
    EXPECT_FALSE(first->isEnabled());
    EXPECT_EQ(first->title(), QStringLiteral("No network connection"));
    EXPECT_EQ(statusBar.items[0]->text(), first->title());
    connectNetwork();
    delegate->monitorStatus();
    EXPECT_EQ(first->title(), QStringLiteral("Connected to the network"));
    EXPECT_EQ(statusBar.items[0]->text(), first->title());
}

TEST_F(AppDelegateTest, TheTimerRepeatsTheProbe)
{
    delegate->applicationDidFinishLaunching();
    // Only the timer is left to notice.
    NotificationCenter::defaultCenter().removeObserver(delegate.get());
    connectNetwork();
    EXPECT_TRUE(waitUntil([&] { return shownImage() == QStringLiteral("statusItemIconGreen"); }));
}

TEST_F(AppDelegateTest, AChangeOfTheNetworkIsShownWithoutTheTimer)
{
    delegate->applicationDidFinishLaunching();
    delegate->monitorTimer()->stop();
    connectNetwork();
    EXPECT_TRUE(waitUntil([&] { return shownImage() == QStringLiteral("statusItemIconGreen"); }));
    ip("link set far0 down");
    EXPECT_TRUE(waitUntil([&] { return shownImage() == QStringLiteral("statusItemIconRed"); }));
    expectRed();
}

TEST_F(AppDelegateTest, DuringARepairChangesAreNotProbed)
{
    delegate->applicationDidFinishLaunching();
    RunLoopTimer::invalidate(delegate->monitorTimer());
    delegate->setMonitorTimer({});
    QObject context;
    bool told = false;
    NotificationCenter::defaultCenter().addObserver(&context,
                                                    kNetworkReachabilityChangedNotification,
                                                    nullptr, [&](QObject *) { told = true; });
    connectNetwork();
    ASSERT_TRUE(waitUntil([&] { return told; }));
    expectRed();
}

TEST_F(AppDelegateTest, MonitorStartSwitchesTheDeviceWatch)
{
    delegate->applicationDidFinishLaunching();
    const auto post = [&](const char *name, const char *object) {
        Q_EMIT distributed->posted(QString::fromLatin1(name), QString::fromLatin1(object));
    };
    const auto running = [&] {
        return !delegate->scanner()->timer().isNull();
    };
    post("MonitorStart", "NO");
    EXPECT_FALSE(running());
    post("MonitorStart", "YES");
    EXPECT_TRUE(running());
    const auto timer = delegate->scanner()->timer();
    post("MonitorStart", "YES");
    EXPECT_EQ(delegate->scanner()->timer(), timer);
    post("Other", "NO");
    EXPECT_TRUE(running());
    for (const char *object : {"yes", "YES ", ""}) {
        post("MonitorStart", "YES");
        post("MonitorStart", object);
        EXPECT_FALSE(running()) << object;
    }
    post("MonitorStart", "YES");
    Q_EMIT distributed->posted(QStringLiteral("MonitorStart"), QString());
    EXPECT_FALSE(running());
}

TEST_F(AppDelegateTest, TheMenusEntriesReachTheirActions)
{
    QStringList titles;
    for (const MenuItem *item : delegate->mainMenu()->items()) {
        if (!item->isSeparatorItem())
            titles.append(item->title());
    }
    EXPECT_EQ(titles.mid(1),
              (QStringList{QStringLiteral("Repair Connection"), QStringLiteral("Open Velq"),
                           QStringLiteral("Quit")}));
    for (const char *action : {"onFixIssue", "openMainApp", "onQuit"}) {
        EXPECT_GE(delegate->metaObject()->indexOfMethod(QByteArray(action) + "(QObject*)"), 0)
            << action;
    }
}

TEST_F(AppDelegateTest, PropertiesHoldWhatIsSet)
{
    delegate->setHidden(true);
    EXPECT_TRUE(delegate->hidden());
    EXPECT_EQ(delegate->window(), nullptr);
    delegate->setScanner(nullptr);
    EXPECT_EQ(delegate->scanner(), nullptr);
    QObject owner;
    const auto timer = RunLoopTimer::scheduled(std::chrono::seconds(1), &owner, [] {});
    delegate->setTimer(timer);
    EXPECT_EQ(delegate->timer(), timer);
    EXPECT_NE(delegate->iconImage(), nullptr);
    EXPECT_NE(delegate->iconImage(), delegate->statusImage());
    EXPECT_NO_THROW(delegate->applicationWillTerminate());
}

TEST_F(AppDelegateTest, TheProbeAsksAnewEachTime)
{
    connectNetwork();
    EXPECT_TRUE(MenuInterface::networkConnect());
    disconnectNetwork();
    EXPECT_FALSE(MenuInterface::networkConnect());
}

} // namespace
