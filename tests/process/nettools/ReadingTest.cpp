#include "process/nettools/Golden.h"
#include "process/nettools/Streams.h"
#include "process/nettools/ToolRun.h"
#include "support/NetworkNamespace.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <ostream>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace
{

using namespace velq::testing;

struct Reading {
    const char *tool;
    std::vector<std::string> arguments;
};

// What the test runner shows of a parameter.
void PrintTo(const Reading &reading, std::ostream *stream)
{
    *stream << reading.tool;
}

// The tools that ask nobody but the kernel.
class ReadingTool : public testing::TestWithParam<Reading>
{
protected:
    void SetUp() override
    {
        ENTER_NETWORK_NAMESPACE_OR_SKIP();
        ipBatch("link set lo up\n"
                "link add lan0 type veth peer name far0\n"
                "link set lan0 up\n"
                "addr add 192.168.7.2/24 dev lan0\n"
                "route add default via 192.168.7.1\n"
                "neigh add 192.168.7.9 lladdr 02:00:00:00:00:09 nud permanent dev lan0\n");
    }

    static ToolRun run(const std::function<void()> &prepare = [] {})
    {
        return runNettool(GetParam().tool, GetParam().arguments, prepare);
    }

    static std::string complaint(const std::string &reason)
    {
        return GetParam().tool + (": standard output: " + reason) + "\n";
    }
};

INSTANTIATE_TEST_SUITE_P(Nettools, ReadingTool,
                         testing::Values(Reading{"arp", {"-an"}}, Reading{"ifconfig", {"lo"}},
                                         Reading{"netstat", {"-nr"}},
                                         Reading{"route", {"-n", "get", "default"}}),
                         [](const auto &tested) { return tested.param.tool; });

TEST_P(ReadingTool, OutputThatCannotBeWrittenIsAFailure)
{
    ASSERT_NE(run().output, "");
    const ToolRun full = run(intoFullDevice);
    EXPECT_EQ(full.status, 1);
    EXPECT_EQ(full.errors, complaint("No space left on device"));
    const ToolRun closed = run(intoClosedPipe);
    EXPECT_EQ(closed.status, 1);
    EXPECT_EQ(closed.errors, complaint("Broken pipe"));
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

TEST_P(ReadingTool, AKernelThatRefusesIsTold)
{
    expectGolden(std::string(GetParam().tool) + "-refused", run(forbidSockets));
}

} // namespace
