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

using velq::process::Surroundings;

TEST(ChildProcessTest, AnEnvironmentOfItsOwnReplacesTheParents)
{
    Surroundings given;
    given.environment = {"ONE=1", "TWO=a b"};
    EXPECT_EQ(ChildProcess("/usr/bin/env", {}, given).readToEnd(), "ONE=1\nTWO=a b\n");
    given.environment->clear();
    EXPECT_EQ(ChildProcess("/usr/bin/env", {}, given).readToEnd(), "");
}

TEST(ChildProcessTest, ItsComplaintsAreLostWhenNobodyWantsThem)
{
    const std::vector<std::string> whereTo{"-c", "readlink /proc/self/fd/2"};
    Surroundings given;
    EXPECT_NE(ChildProcess("/bin/sh", whereTo, given).readToEnd(), "/dev/null\n");
    given.mutesError = true;
    EXPECT_EQ(ChildProcess("/bin/sh", whereTo, given).readToEnd(), "/dev/null\n");
}

TEST(ChildProcessTest, WorksInTheFolderItWasGiven)
{
    Surroundings given;
    given.folder = "/usr";
    EXPECT_EQ(ChildProcess("/bin/sh", {"-c", "pwd -P"}, given).readToEnd(), "/usr\n");
    given.folder = "/no/such/folder";
    EXPECT_THROW(ChildProcess("/bin/sh", {"-c", "pwd"}, given), LaunchError);
}

// The C library keeps two signals beyond the 31 for itself.
TEST(ChildProcessTest, InASessionOfItsOwnEverySignalIsAtItsDefault)
{
    Surroundings given;
    given.ownSession = true;
    const auto before = std::signal(SIGHUP, SIG_IGN);
    ChildProcess child("/bin/sh", {"-c", R"(
        set -- $(cat /proc/self/stat)
        echo $(($6 == $$))
        ignored=$(awk '/SigIgn/ { print $2 }' /proc/self/status)
        echo $((0x$ignored & 0x7fffffff)))"},
                       given);
    EXPECT_EQ(child.readToEnd(), "1\n0\n");
    (void)std::signal(SIGHUP, before);
}

TEST(ChildProcessTest, InheritingTheOutputItMakesNoPipe)
{
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    const int kept = dup(STDOUT_FILENO);
    dup2(ends[1], STDOUT_FILENO);
    close(ends[1]);
    Surroundings given;
    given.inheritsOutput = true;
    {
        const ChildProcess child("/bin/echo", {"here"}, given);
        EXPECT_EQ(child.output(), -1);
    }
    dup2(kept, STDOUT_FILENO);
    close(kept);
    std::array<char, 16> text{};
    EXPECT_EQ(read(ends[0], text.data(), text.size()), 5);
    EXPECT_STREQ(text.data(), "here\n");
    close(ends[0]);
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
