#include "support/PrivateBus.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

// One private bus is both the session's and the system's.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const velq::testing::PrivateBus bus;
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", QByteArray::fromStdString(bus.address()));
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
