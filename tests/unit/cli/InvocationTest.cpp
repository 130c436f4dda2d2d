#include "cli/Invocation.h"

#include "cli/Examination.h"

#include <gtest/gtest.h>

namespace
{

using velq::cli::Invocation;
using velq::cli::repairOption;
using Request = Invocation::Request;

Invocation parsed(const char *line)
{
    return Invocation::parse(QString::fromUtf8(line).split(u' ', Qt::SkipEmptyParts));
}

QString commandOf(const Invocation &invocation)
{
    return invocation.command == nullptr ? QString() : QLatin1String(invocation.command->name);
}

TEST(InvocationTest, ACommandIsToBeRunForPeople)
{
    for (const char *name : {"status", "services", "devices", "repair"}) {
        const Invocation invocation = parsed(name);
        EXPECT_EQ(invocation.request, Request::Run);
        EXPECT_EQ(commandOf(invocation), QLatin1String(name));
        EXPECT_FALSE(invocation.arguments.json);
        EXPECT_TRUE(invocation.complaint.isNull());
    }
}

TEST(InvocationTest, TheOptionForProgramsStandsBeforeOrAfterTheCommand)
{
    for (const char *line : {"status --json", "--json status", "--json status --json"}) {
        EXPECT_EQ(parsed(line).request, Request::Run) << line;
        EXPECT_TRUE(parsed(line).arguments.json) << line;
    }
}

TEST(InvocationTest, TheToolsAreHeardWhereThatIsAskedFor)
{
    EXPECT_FALSE(parsed("status --json").arguments.verbose);
    for (const char *line : {"status --verbose", "--verbose status --json"})
        EXPECT_TRUE(parsed(line).arguments.verbose) << line;
    EXPECT_EQ(parsed("--verbose").complaint,
              QStringLiteral("which command? velq --help lists them"));
}

TEST(InvocationTest, HelpIsOfTheCommandIfOneIsNamed)
{
    for (const char *line : {"repair --help", "-h repair", "repair --json -h"}) {
        EXPECT_EQ(parsed(line).request, Request::ShowHelp) << line;
        EXPECT_EQ(commandOf(parsed(line)), QStringLiteral("repair")) << line;
    }
    EXPECT_EQ(parsed("--help").request, Request::ShowHelp);
    EXPECT_EQ(parsed("--help").command, nullptr);
}

TEST(InvocationTest, HelpIsAskedForByAWordAsWell)
{
    for (const char *line : {"help repair", "help repair --json", "--json help repair"}) {
        EXPECT_EQ(parsed(line).request, Request::ShowHelp) << line;
        EXPECT_EQ(commandOf(parsed(line)), QStringLiteral("repair")) << line;
    }
    EXPECT_EQ(parsed("help").request, Request::ShowHelp);
    EXPECT_EQ(parsed("help").command, nullptr);
    EXPECT_EQ(parsed("help help").request, Request::Refuse);
    EXPECT_EQ(parsed("repair help").complaint, QStringLiteral("unexpected argument 'help'"));
}

TEST(InvocationTest, HelpGoesBeforeTheVersion)
{
    EXPECT_EQ(parsed("--version").request, Request::ShowVersion);
    EXPECT_EQ(parsed("--help --version").request, Request::ShowHelp);
    EXPECT_EQ(parsed("--version --help").request, Request::ShowHelp);
}

TEST(InvocationTest, WithoutACommandThereIsNothingToRun)
{
    for (const char *line : {"", "--json"}) {
        EXPECT_EQ(parsed(line).request, Request::Refuse);
        EXPECT_EQ(parsed(line).complaint, QStringLiteral("which command? velq --help lists them"));
    }
}

TEST(InvocationTest, WhatMakesNoSenseIsRefusedWhateverElseIsAskedFor)
{
    const struct {
        const char *line;
        const char *complaint;
    } cases[] = {
        {"mend", "unknown command 'mend'; velq --help lists those that there are"},
        {"Status", "unknown command 'Status'; velq --help lists those that there are"},
        {"stat", "unknown command 'stat'; velq --help lists those that there are"},
        {"status repair", "unexpected argument 'repair'"},
        {"status --yaml", "unknown option '--yaml'"},
        {"status --jso", "unknown option '--jso'"},
        {"status -", "unknown option '-'"},
        {"--repair", "unknown option '--repair'"},
        {"ignore", "which KEY?"},
        {"ignore A B", "unexpected argument 'B'"},
        {"status --repair", "unknown option '--repair'"},
        {"mend --yaml", "unknown command 'mend'; velq --help lists those that there are"},
        {"diagnose --repair=yes", "unknown option '--repair=yes'"},
        {"-hv", "unknown option '-hv'"},
        {"--help mend", "unknown command 'mend'; velq --help lists those that there are"},
        {"--version status lan0", "unexpected argument 'lan0'"},
    };
    for (const auto &[line, complaint] : cases) {
        EXPECT_EQ(parsed(line).request, Request::Refuse) << line;
        EXPECT_EQ(parsed(line).complaint, QLatin1String(complaint)) << line;
    }
    EXPECT_EQ(Invocation::parse({QString()}).complaint,
              QStringLiteral("unknown command ''; velq --help lists those that there are"));
}

TEST(InvocationTest, TheFirstMistakeIsTheOneThatIsTold)
{
    const Invocation invocation = parsed("services --yaml lan0");
    EXPECT_EQ(invocation.complaint, QStringLiteral("unknown option '--yaml'"));
    EXPECT_EQ(commandOf(invocation), QStringLiteral("services"));
}

TEST(InvocationTest, OptionsStandAnywhere)
{
    for (const char *line :
         {"diagnose --repair --json", "--repair diagnose --json", "--json --repair diagnose"}) {
        const Invocation invocation = parsed(line);
        EXPECT_EQ(invocation.request, Request::Run) << line;
        EXPECT_STREQ(invocation.command->name, "diagnose");
        EXPECT_TRUE(invocation.arguments.json && invocation.arguments.has(repairOption));
    }
    EXPECT_FALSE(parsed("diagnose --json").arguments.has(repairOption));
}

TEST(InvocationTest, AnOperandIsTheWordAfterTheCommand)
{
    const Invocation invocation = parsed("ignore --json NetworkKey4");
    EXPECT_EQ(invocation.request, Request::Run);
    EXPECT_EQ(invocation.arguments.operands, QStringList{QStringLiteral("NetworkKey4")});
}

TEST(InvocationTest, HelpNeedsNoOperand)
{
    EXPECT_EQ(parsed("ignore --help").request, Request::ShowHelp);
    EXPECT_EQ(parsed("ignore --help --version").request, Request::ShowHelp);
    EXPECT_EQ(parsed("--version").request, Request::ShowVersion);
}

} // namespace
