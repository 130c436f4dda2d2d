#include "monitor/AppDelegate.h"

#include "common/NotificationCenter.h"
#include "common/Reachability.h"
#include "devices/WifiDeviceScanner.h"
#include "monitor/MainInterface.h"
#include "monitor/MenuInterface.h"
#include "platform/DistributedNotificationCenter.h"
#include "platform/UserNotificationCenter.h"
#include "support/NetworkNamespace.h"
#include "support/Waiting.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::ip;
using velq::testing::waitUntil;

struct RecordingStatusBar : StatusBar {
    std::shared_ptr<StatusItem> statusItemWithLength(double length) override
    {
        lengths.append(length);
        if (onItem)
            onItem();
        items.append(std::make_shared<StatusItem>());
        return items.last();
    }
    std::function<void()> onItem;
    QList<double> lengths;
    QList<std::shared_ptr<StatusItem>> items;
};

struct SilentCenter : UserNotificationCenter {
    void deliver(const UserNotification &) override { }
};

// The delegate in a network namespace whose only way out is a default route over lan0.
class AppDelegateTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nonexistent");
        ip("link add lan0 type veth peer name far0");
        ip("link set lan0 up");
        ip("link set far0 up");
        ip("addr add 192.168.7.2/24 dev lan0");
        distributed = std::make_unique<DistributedNotificationCenter>();
        makeDelegate({12, 0, 0});
    }

    void makeDelegate(const SystemVersion &version)
    {
        delegate = std::make_unique<AppDelegate>(
            Surroundings{statusBar, notifications, *distributed, version});
        interface.connectOutlets(*delegate);
    }

    static void connectNetwork() { ip("route add default via 192.168.7.1"); }
    static void disconnectNetwork() { ip("route del default"); }

    QString shownImage() const { return delegate->statusImage()->image()->name(); }

    void expectGreen() const
    {
        EXPECT_EQ(shownImage(), QStringLiteral("statusItemIconGreen"));
        EXPECT_EQ(delegate->fixMenuItem()->target(), nullptr);
        EXPECT_TRUE(delegate->fixMenuItem()->action().isEmpty());
        EXPECT_FALSE(delegate->fixMenuItem()->isEnabled());
    }
    void expectRed() const
    {
        EXPECT_EQ(shownImage(), QStringLiteral("statusItemIconRed"));
        EXPECT_EQ(delegate->fixMenuItem()->target(), delegate.get());
        EXPECT_EQ(delegate->fixMenuItem()->action(), "onFixIssue");
        EXPECT_TRUE(delegate->fixMenuItem()->isEnabled());
    }

    RecordingStatusBar statusBar;
    SilentCenter notifications;
    std::unique_ptr<DistributedNotificationCenter> distributed;
    MainInterface interface;
    std::unique_ptr<AppDelegate> delegate;
};

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

TEST_F(AppDelegateTest, QuitEndsTheEventLoop)
{
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [this] { delegate->mainMenu()->items().last()->choose(); },
        Qt::QueuedConnection);
    EXPECT_EQ(QCoreApplication::exec(), 0);
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
