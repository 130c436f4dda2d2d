#include "support/ProcessNamespace.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

// Quitting ends every main application that it sees; here it sees only those of the test.
int main(int argc, char **argv)
{
    testing::InitGoogleTest(&argc, argv);
    const auto run = [&] {
        const QCoreApplication application(argc, argv);
        return RUN_ALL_TESTS();
    };
    return GTEST_FLAG_GET(list_tests) ? run() : velq::testing::runAmongOwnProcesses(run);
}
