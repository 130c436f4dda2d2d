#include "cli/Help.h"

#include "cli/Table.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace
{

using namespace velq::cli;

const Command &repairCommand()
{
    return *std::ranges::find(commands, QLatin1String("repair"),
                              [](const Command &each) { return QLatin1String(each.name); });
}

TEST(Help, OfTheProgramNamesEveryCommand)
{
    const QString text = help(nullptr);
    EXPECT_TRUE(text.startsWith(usage(nullptr)));
    for (const Command &each : commands) {
        EXPECT_TRUE(text.contains(QStringLiteral("\n  %1 ").arg(QLatin1String(each.name))));
        EXPECT_TRUE(text.contains(QString::fromUtf8(each.summary) + u'\n'));
    }
    EXPECT_TRUE(text.contains(QStringLiteral("\n  --version ")));
}

TEST(Help, OfACommandIsItsUsageItsDescriptionAndItsStatuses)
{
    EXPECT_EQ(
        help(&repairCommand()),
        QStringLiteral(
            "usage: velq repair [--json] [--help]\n\n"
            "Brings the connection back: switches on every interface and every service, and\n"
            "lets Ethernet and Wi-Fi ask for addresses. Needs the administrator's rights and\n"
            "may ask for a password. Does nothing while the network is usable. The settings\n"
            "that it changes, velq restore puts back.\n\n"
            "Options:\n"
            "  --json      answer for programs, in JSON\n"
            "  --verbose   show what the system's tools complain of, too\n"
            "  -h, --help  show this text\n\n"
            "Exit status:\n"
            "  0           all is well\n"
            "  1           there still is no connection\n"
            "  2           the command line makes no sense\n"));
}

// What a command ends with is what scripts are told.
TEST(Help, TheStatusesAreTheProgramsOwn)
{
    EXPECT_EQ(int{Fine}, 0);
    EXPECT_EQ(int{Found}, 1);
    EXPECT_EQ(int{WrongUse}, 2);
    for (const Command &each : commands) {
        const QString found = each.found == nullptr
            ? QStringLiteral("the command could not be carried out")
            : QString::fromUtf8(each.found);
        EXPECT_TRUE(
            exitStatuses(&each).contains(QStringLiteral("\n  1           %1\n").arg(found)));
    }
}

TEST(Help, EveryLineFitsATerminal)
{
    QStringList lines = help(nullptr).split(u'\n');
    for (const Command &each : commands)
        lines += help(&each).split(u'\n');
    for (const QString &line : lines)
        EXPECT_LE(line.size(), 80) << line.toStdString();
}

} // namespace
