#include "process/nettools/Golden.h"
#include "process/nettools/ToolRun.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

using testing::MatchesRegex;
using velq::testing::expectGolden;
using velq::testing::runNettool;
using velq::testing::ToolRun;

struct Tool {
    const char *name;
    const char *options;
};

// What the test runner shows of a parameter.
void PrintTo(const Tool &tool, std::ostream *stream)
{
    *stream << tool.name;
}

class EveryTool : public testing::TestWithParam<Tool>
{
protected:
    static ToolRun run(const std::function<void()> &prepare)
    {
        return runNettool(GetParam().name, {GetParam().options}, prepare);
    }

    static std::string complaint(const std::string &reason)
    {
        return std::string(GetParam().name) + ": " + reason + "\n";
    }
};

INSTANTIATE_TEST_SUITE_P(Nettools, EveryTool,
                         testing::Values(Tool{"arp", "-an"}, Tool{"netstat", "-nr"}),
                         [](const auto &tested) { return tested.param.name; });

TEST_P(EveryTool, HelpsAndComplains)
{
    const std::string name = GetParam().name;
    expectGolden(name + "-help", runNettool(name, {"--help"}));
    expectGolden(name + "-without-options", runNettool(name, {}));
    expectGolden(name + "-unknown-option", runNettool(name, {"-x"}));
    expectGolden(name + "-unexpected-argument", runNettool(name, {GetParam().options, "en0"}));
}

TEST_P(EveryTool, TellsItsVersion)
{
    const ToolRun version = runNettool(GetParam().name, {"--version"});
    EXPECT_EQ(version.status, 0);
    EXPECT_EQ(version.errors, "");
    EXPECT_THAT(version.output,
                MatchesRegex(std::string(GetParam().name) + " \\(Velq\\) [0-9.]+\n"));
}

TEST_P(EveryTool, AFullDeviceIsAFailure)
{
    const ToolRun failed = runNettool(GetParam().name, {"--help"}, [] {
        dup2(open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    });
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.errors, complaint("standard output: No space left on device"));
}

TEST_P(EveryTool, AClosedPipeIsAFailureAndNoCrash)
{
    const ToolRun failed = runNettool(GetParam().name, {"--help"}, [] {
        std::array<int, 2> ends{};
        if (pipe(ends.data()) == 0) {
            dup2(ends[1], STDOUT_FILENO);
            close(ends[0]);
            close(ends[1]);
        }
    });
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.errors, complaint("standard output: Broken pipe"));
}

TEST_P(EveryTool, ClosedOutputIsAFailure)
{
    const ToolRun failed = runNettool(GetParam().name, {"--help"}, [] { close(STDOUT_FILENO); });
    EXPECT_EQ(failed.status, 1);
    EXPECT_EQ(failed.errors, complaint("standard output: Bad file descriptor"));
}

void forbidSockets()
{
    std::array<sock_filter, 4> rules{{
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, 0),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_socket, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    }};
    const sock_fprog program{rules.size(), rules.data()};
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program);
}

TEST_P(EveryTool, AKernelThatRefusesIsTold)
{
    expectGolden(std::string(GetParam().name) + "-refused", run(forbidSockets));
}

} // namespace
