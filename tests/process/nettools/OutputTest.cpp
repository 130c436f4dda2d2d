#include "nettools/Table.h"
#include "nettools/lib/Help.h"
#include "process/nettools/Golden.h"
#include "process/nettools/Streams.h"
#include "process/nettools/ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <unistd.h>

namespace
{

using testing::EndsWith;
using testing::HasSubstr;
using testing::MatchesRegex;
using velq::nettools::Form;
using velq::nettools::Tool;
using namespace velq::testing;

struct Named {
    Tool tool;
};

// What the test runner shows of a parameter.
void PrintTo(const Named &named, std::ostream *stream)
{
    *stream << named.tool.name;
}

std::vector<Named> allTools()
{
    static constexpr auto tools = velq::nettools::toolDescriptions();
    std::vector<Named> result;
    std::ranges::transform(tools, std::back_inserter(result),
                           [](const Tool &tool) { return Named{tool}; });
    return result;
}

// Without the ends of lines, which are not the same in a page.
std::string inOneLine(std::string_view text)
{
    std::string result;
    std::ranges::unique_copy(text, std::back_inserter(result), [](char first, char second) {
        return std::isspace(static_cast<unsigned char>(first)) != 0
            && std::isspace(static_cast<unsigned char>(second)) != 0;
    });
    std::ranges::replace(result, '\n', ' ');
    return result;
}

class EveryTool : public testing::TestWithParam<Named>
{
protected:
    static const Tool &tool() { return GetParam().tool; }
    static std::string name() { return std::string(tool().name); }

    static ToolRun help(const std::function<void()> &prepare = [] {})
    {
        return runNettool(name(), {"--help"}, prepare);
    }

    static void expectTold(const std::string &shown)
    {
        const std::string text = inOneLine(shown);
        for (const std::string &call : callsOf(tool()))
            EXPECT_THAT(text, HasSubstr(call));
        EXPECT_THAT(text, HasSubstr(inOneLine(tool().summary)));
        for (const Form &form : tool().forms)
            EXPECT_THAT(text, HasSubstr(callOf(form) + " " + std::string(form.summary)));
    }

    static std::string complaint(const std::string &reason)
    {
        return name() + ": " + reason + "\n";
    }
};

INSTANTIATE_TEST_SUITE_P(Nettools, EveryTool, testing::ValuesIn(allTools()),
                         [](const auto &tested) { return std::string(tested.param.tool.name); });

TEST_P(EveryTool, Helps)
{
    const ToolRun shown = help();
    expectGolden(name() + "-help", shown);
    expectTold(shown.output);
    std::istringstream lines(shown.output);
    for (std::string line; std::getline(lines, line);)
        EXPECT_LE(line.size(), 80U) << line;
    EXPECT_THAT(shown.output, EndsWith("The manual page: man velq-" + name() + "\n"));
}

TEST_P(EveryTool, HasAManualPageThatTellsOfEveryForm)
{
    const std::string file = VELQ_MANUALS "/velq-" + name() + ".1";
    const ToolRun page = runProgram(
        "env", {"env", "MANWIDTH=300", "LC_ALL=C.UTF-8", "man", "--warnings", "-l", file});
    if (page.status == 127)
        GTEST_SKIP() << "needs man";
    EXPECT_EQ(page.status, 0);
    EXPECT_EQ(page.errors, "");
    EXPECT_THAT(inOneLine(page.output), HasSubstr(" velq-" + name() + " - "));
    expectTold(page.output);
}

TEST_P(EveryTool, ComplainsOfAnOptionThatItHasNot)
{
    if (name() == "sudo" && geteuid() != 0)
        GTEST_SKIP() << "the system's sudo answers";
    expectGolden(name() + "-unknown-option", runNettool(name(), {"-x"}));
}

TEST_P(EveryTool, TellsItsVersion)
{
    const ToolRun version = runNettool(name(), {"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.errors, "");
    EXPECT_THAT(version.output, MatchesRegex(name() + " \\(Velq\\) [0-9.]+\n"));
}

TEST_P(EveryTool, AFullDeviceIsAFailure)
{
    const ToolRun failed = help(intoFullDevice);
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.errors, complaint("standard output: No space left on device"));
}

TEST_P(EveryTool, AClosedPipeIsAFailureAndNoCrash)
{
    const ToolRun failed = help(intoClosedPipe);
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.errors, complaint("standard output: Broken pipe"));
}

TEST_P(EveryTool, ClosedOutputIsAFailure)
{
    const ToolRun failed = help([] { close(STDOUT_FILENO); });
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.errors, complaint("standard output: Bad file descriptor"));
}

} // namespace
