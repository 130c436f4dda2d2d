#include "shell/process/ChildProcess.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using velq::process::ChildProcess;
using velq::process::LaunchError;

std::string outputOf(const std::string &script)
{
    ChildProcess child("/bin/sh", {"-c", script});
    std::string output = child.readToEnd();
    child.waitUntilExit();
    return output;
}

TEST(ChildProcessTest, PassesTheArgumentVectorAsItIs)
{
    ChildProcess child("/bin/sh",
                       {"-c", R"(printf '[%s]' "$0" "$@")", "a b", "", "$HOME", R"(x"y)"});
    EXPECT_EQ(child.readToEnd(), R"([a b][][$HOME][x"y])");
}

TEST(ChildProcessTest, InheritsNoDescriptorBeyondTheStandardOnes)
{
    const int extra = open("/dev/null", O_RDONLY);
    ASSERT_GT(extra, 2);
    // The fourth is the listing's own.
    EXPECT_EQ(ChildProcess("/bin/ls", {"/proc/self/fd"}).readToEnd(), "0\n1\n2\n3\n");
    close(extra);
}

TEST(ChildProcessTest, InheritsEnvironmentAndFolder)
{
    setenv("VELQ_CHILD_TEST", "here", 1);
    std::array<char, 4096> folder{};
    ASSERT_NE(getcwd(folder.data(), folder.size()), nullptr);
    EXPECT_EQ(outputOf("echo $VELQ_CHILD_TEST; pwd"), std::string("here\n") + folder.data() + "\n");
}

TEST(ChildProcessTest, BlockedAndIgnoredSignalsAreBackToTheirDefaults)
{
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigset_t old;
    pthread_sigmask(SIG_BLOCK, &set, &old);
    const std::string blocked = outputOf("kill -s TERM $$; echo survived");
    const std::string ignored = outputOf("kill -s PIPE $$; echo survived");
    pthread_sigmask(SIG_SETMASK, &old, nullptr);
    (void)std::signal(SIGPIPE, before);
    EXPECT_EQ(blocked, "");
    EXPECT_EQ(ignored, "");
}

TEST(ChildProcessTest, WhatCannotBeLaunchedThrowsAndNamesTheFile)
{
    EXPECT_THROW(ChildProcess("/no/such/file", {}), LaunchError);
    EXPECT_THROW(ChildProcess("", {}), LaunchError);
    EXPECT_THROW(ChildProcess("/etc/passwd", {}), LaunchError);
    EXPECT_THROW(ChildProcess("/tmp", {}), LaunchError);
    EXPECT_THROW(ChildProcess("sh", {"-c", "exit"}), std::invalid_argument);
    try {
        const ChildProcess child("/no/such/file", {});
    } catch (const LaunchError &error) {
        EXPECT_STREQ(error.what(), "cannot launch '/no/such/file': No such file or directory");
    }
}

TEST(ChildProcessTest, FailedLaunchesLeakNoDescriptor)
{
    const int first = dup(0);
    close(first);
    for (int i = 0; i < 20; ++i)
        EXPECT_THROW(ChildProcess("/no/such/file", {}), LaunchError);
    const int second = dup(0);
    close(second);
    EXPECT_EQ(first, second);
}

TEST(ChildProcessTest, ReadsMoreThanThePipeHolds)
{
    EXPECT_EQ(outputOf("head -c 300000 /dev/zero | tr '\\0' x").size(), 300000u);
}

TEST(ChildProcessTest, TellsOutputFromExit)
{
    ChildProcess child("/bin/sh", {"-c", "echo one"});
    EXPECT_EQ(child.waitForEvent(), ChildProcess::Event::Output);
    EXPECT_EQ(child.readAvailable(), "one\n");
    EXPECT_EQ(child.waitForEvent(), ChildProcess::Event::Exit);
}

TEST(ChildProcessTest, LeavesNoZombie)
{
    {
        const ChildProcess child("/bin/true", {});
    }
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
    EXPECT_EQ(errno, ECHILD);
}

} // namespace
