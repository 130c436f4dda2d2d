#include "process/nettools/ToolRun.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <unistd.h>

namespace
{

using velq::testing::runNettool;
using velq::testing::ToolRun;

class Sudo : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string pattern = ::testing::TempDir() + "velq-sudo.XXXXXX";
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        folder = pattern;
        std::filesystem::permissions(folder, std::filesystem::perms(0755));
    }
    void TearDown() override { std::filesystem::remove_all(folder); }

    // As somebody else, with the folder in front of the system's.
    ToolRun asNobody(const std::vector<std::string> &arguments) const
    {
        return runNettool("sudo", arguments, [this] {
            setenv("PATH", folder.c_str(), 1);
            if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0))
                _exit(99);
        });
    }

    std::filesystem::path folder;
};

TEST_F(Sudo, RunsForRootAtOnce)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "this is about root";
    const ToolRun run = runNettool("sudo", {"sh", "-c", "echo $0 $1; exit 7", "zero", "a b"});
    EXPECT_EQ(run.output, "zero a b\n");
    EXPECT_EQ(run.status, 7);
    EXPECT_EQ(runNettool("sudo", {"no-such-program"}).status, 127);
    EXPECT_EQ(runNettool("sudo", {"/"}).status, 126);
    EXPECT_EQ(runNettool("sudo", {"-u", "nobody", "id"}).status, 2);
}

TEST_F(Sudo, LeavesOthersToTheSystems)
{
    std::ofstream(folder / "sudo") << "#!/bin/sh\necho \"system's: $*\"\nexit 3\n";
    std::filesystem::permissions(folder / "sudo", std::filesystem::perms(0755));
    const ToolRun run = asNobody({"-n", "id", "-u"});
    EXPECT_EQ(run.output, "system's: -n id -u\n") << run.errors;
    EXPECT_EQ(run.status, 3);
}

TEST_F(Sudo, SaysSoWhereThereIsNone)
{
    const ToolRun run = asNobody({"id"});
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, "sudo: only root can do that, and this system has no sudo\n");
}

TEST_F(Sudo, WithoutACommandIsMisuse)
{
    EXPECT_EQ(runNettool("sudo", {}).status, 2);
}

} // namespace
