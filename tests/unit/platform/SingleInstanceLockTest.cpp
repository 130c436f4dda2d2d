#include "platform/SingleInstance.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace
{

using namespace velq;

const QString identifier = QStringLiteral("com.zelmor.SingleInstanceTest");

// A session without a bus, whose runtime folder is all that its processes share.
class SingleInstanceLockTest : public ::testing::Test
{
protected:
    SingleInstanceLockTest()
    {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        qputenv("XDG_RUNTIME_DIR", folder.path().toLocal8Bit());
    }

    QTemporaryDir folder;
};

TEST_F(SingleInstanceLockTest, ASecondOneIsRefusedUntilTheFirstGoes)
{
    {
        SingleInstance first;
        EXPECT_TRUE(first.claim(identifier));
        EXPECT_FALSE(SingleInstance().claim(identifier));
        EXPECT_TRUE(SingleInstance().claim(identifier + QStringLiteral(".Other")));
    }
    EXPECT_TRUE(SingleInstance().claim(identifier));
}

TEST_F(SingleInstanceLockTest, AnotherSessionIsAnother)
{
    SingleInstance here;
    EXPECT_TRUE(here.claim(identifier));
    const QTemporaryDir elsewhere;
    qputenv("XDG_RUNTIME_DIR", elsewhere.path().toLocal8Bit());
    EXPECT_TRUE(SingleInstance().claim(identifier));
}

} // namespace
