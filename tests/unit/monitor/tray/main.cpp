#include "support/PrivateBus.h"

#include <QApplication>
#include <gtest/gtest.h>

// Icons and menus need an application with windows, though no display, and the tray needs a bus.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const velq::testing::PrivateBus bus;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setApplicationDisplayName(QStringLiteral("Velq"));
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
