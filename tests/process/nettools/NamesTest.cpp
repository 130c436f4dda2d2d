#include "process/nettools/Golden.h"
#include "process/nettools/ToolRun.h"
#include "support/NetworkNamespace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <unistd.h>

namespace
{

using testing::HasSubstr;
using namespace velq::testing;

struct Call {
    const char *label;
    const char *tool;
    std::vector<std::string> arguments; ///< "NAME" stands for what is named
};

// What the test runner shows of a parameter.
void PrintTo(const Call &call, std::ostream *stream)
{
    *stream << call.label;
}

// Names that are nobody's, and would do something if a shell or an option's reader got them.
const std::vector<std::string> names{"nobody.invalid",
                                     "",
                                     "a b",
                                     " ",
                                     "*",
                                     "$(touch canary)",
                                     "`touch canary`",
                                     ";touch canary",
                                     "|touch canary",
                                     "a\nb\tc",
                                     "'",
                                     "\"",
                                     "~",
                                     "..",

                                     "%s%n"};

class Name : public testing::TestWithParam<Call>
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        std::string pattern = ::testing::TempDir() + "velq-names.XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        m_folder = pattern;
    }

    void TearDown() override
    {
        if (!m_folder.empty())
            std::filesystem::remove_all(m_folder);
    }

    ToolRun run(const std::string &name) const
    {
        std::vector<std::string> arguments = GetParam().arguments;
        std::ranges::replace(arguments, "NAME", name);
        return runNettool(GetParam().tool, arguments, [this] {
            if (chdir(m_folder.c_str()) != 0 || setenv("HOME", m_folder.c_str(), 1) != 0)
                _exit(99);
        });
    }

    bool isUntouched() const { return std::filesystem::is_empty(m_folder); }

private:
    std::filesystem::path m_folder;
};

INSTANTIATE_TEST_SUITE_P(
    Nettools, Name,
    testing::Values(Call{"defaults-read", "defaults", {"read", "NAME"}},
                    Call{"defaults-key", "defaults", {"read", "com.example.None", "NAME"}},
                    Call{"ifconfig", "ifconfig", {"NAME"}},
                    Call{"ifconfig-up", "ifconfig", {"NAME", "up"}},
                    Call{"launchctl", "launchctl", {"load", "NAME"}},
                    Call{"ping", "ping", {"-c1", "NAME"}},
                    Call{"route", "route", {"-n", "get", "NAME"}}),
    [](const auto &tested) {
        std::string name = tested.param.label;
        std::ranges::replace(name, '-', '_');
        return name;
    });

TEST_P(Name, OfNobodyIsAFailureInWords)
{
    std::string all;
    int failed = 0;
    for (const std::string &name : names) {
        const ToolRun one = run(name);
        EXPECT_EQ(one.output, "") << name;
        EXPECT_NE(one.status, 0) << name;
        EXPECT_THAT(one.errors, HasSubstr(name));
        all += "[" + name + "] " + std::to_string(one.status) + "\n" + one.errors;
        failed = std::max(failed, one.status);
    }
    // The system's ping puts it into its own words.
    if (GetParam().tool != std::string_view("ping"))
        expectGolden(std::string(GetParam().label) + "-names", {"", all, failed});
    EXPECT_TRUE(isUntouched());
}

} // namespace
