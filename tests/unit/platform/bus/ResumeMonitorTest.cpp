#include "platform/ResumeMonitor.h"

#include "PostListener.h"
#include "SomebodyElse.h"
#include "support/Waiting.h"

#include <QDBusConnectionInterface>
#include <gtest/gtest.h>

namespace
{

using namespace velq;
using velq::testing::PostListener;
using velq::testing::SomebodyElse;
using velq::testing::waitUntil;

class ResumeMonitorTest : public ::testing::Test
{
protected:
    ResumeMonitorTest()
    {
        QObject::connect(&monitor, &ResumeMonitor::resumed, [this] { ++resumes; });
        auto bus = QDBusConnection::systemBus();
        EXPECT_TRUE(bus.connect(QString(), QString(), QString(), QStringLiteral("Sentinel"),
                                &sentinel, SLOT(hear(QString, QString))));
        // The bus answers in order: from here on, what is sent is heard.
        EXPECT_TRUE(bus.interface()->registeredServiceNames().isValid());
    }

    // Sends the login manager's signals, and waits until they have been heard.
    void loginManagerSays(const QList<bool> &goingToSleep)
    {
        for (const bool value : goingToSleep) {
            loginManager.emitSignal("/org/freedesktop/login1", "org.freedesktop.login1.Manager",
                                    "PrepareForSleep", {value});
        }
        sentinel.heard.clear();
        loginManager.emitSignal("/", "com.zelmor.Test", "Sentinel", {QString(), QString()});
        ASSERT_TRUE(waitUntil([this] { return !sentinel.heard.isEmpty(); }));
    }

    int resumes = 0;
    ResumeMonitor monitor;
    PostListener sentinel;
    SomebodyElse loginManager;
};

TEST_F(ResumeMonitorTest, GoingToSleepIsNoResume)
{
    loginManagerSays({true});
    EXPECT_EQ(resumes, 0);
}

TEST_F(ResumeMonitorTest, EachReturnIsOne)
{
    loginManagerSays({true, false});
    EXPECT_EQ(resumes, 1);
    loginManagerSays({true, false});
    EXPECT_EQ(resumes, 2);
}

} // namespace
