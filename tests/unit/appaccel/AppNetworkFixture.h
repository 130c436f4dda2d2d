#pragma once

#include "appaccel/AppNetworkScanner.h"
#include "platform/UserDefaults.h"
#include "scanner/AppNetworkAppdelegate.h"
#include "support/FakeRootDaemon.h"
#include "support/FakeTool.h"
#include "support/OwnHome.h"

#include <gtest/gtest.h>
#include <unistd.h>

namespace velq::testing
{

/// A computer whose Safari's delay and hosts file are what the test says.
class AppNetworkTest : public ::testing::Test
{
protected:
    /// Keeps what it was to wait instead of waiting.
    class TestedScanner : public AppNetworkScanner
    {
    public:
        mutable QList<std::chrono::seconds> slept;

    protected:
        void sleepFor(std::chrono::seconds duration) const override { slept.append(duration); }
    };

    class Delegate : public AppNetworkAppdelegate
    {
    public:
        void appScannerStatus(qint64 status) override
        {
            told.append(status);
            if (onTold)
                onTold(status);
        }

        QList<qint64> told;
        std::function<void(qint64)> onTold;
    };

    void SetUp() override
    {
        if (geteuid() != 0)
            GTEST_SKIP() << "only root can be the root that answers";
        (void)ownHome();
        for (const QString &key : ignoreKeys)
            UserDefaults::standardUserDefaults().removeObjectForKey(key);
        rootDaemon.emplace(tools);
        setDelay("0.25\n");
        setHosts("192.0.2.10  accelerated.velq.example\n");
        scanner.setDelegate(&delegate);
    }

    /// What the preference's tool prints.
    void setDelay(const QByteArray &output) const
    {
        tools.addPrinting(QStringLiteral("defaults"), output);
    }
    /// What of the hosts file has the domain in it.
    void setHosts(const QByteArray &output) const { rootDaemon->setAnswer(output); }

    void expectItem(qsizetype index, bool on) const
    {
        const auto item = scanner.array().value(index);
        ASSERT_EQ(item->errorStatus().size(), 1) << index;
        const NetStatus &line = *item->errorStatus()[0];
        EXPECT_EQ(line.error, !on) << index;
        EXPECT_EQ(line.name,
                  on ? QStringLiteral("Host acceleration: On")
                     : QStringLiteral("Host acceleration: Off"))
            << index;
        EXPECT_TRUE(line.des.isNull());
        EXPECT_EQ(item->issue(), on ? 0 : 1) << index;
    }

    const QStringList ignoreKeys{QStringLiteral("AppOptimize1"), QStringLiteral("AppOptimize2"),
                                 QStringLiteral("AppOptimize3"), QStringLiteral("AppOptimize4")};
    FakeTools tools;
    std::optional<FakeRootDaemon> rootDaemon;
    Delegate delegate;
    TestedScanner scanner;
};

} // namespace velq::testing
