#pragma once

#include "devices/WifiDeviceScanner.h"
#include "monitor/AppDelegate.h"
#include "monitor/MainInterface.h"
#include "platform/DistributedNotificationCenter.h"
#include "support/NetworkNamespace.h"
#include "unit/monitor/TestSurroundings.h"

#include <gtest/gtest.h>

namespace velq::testing
{

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

} // namespace velq::testing
