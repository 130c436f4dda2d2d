#include <QCoreApplication>
#include <gtest/gtest.h>

// Queued calls, timers and notifiers need an application; no test needs a display.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
