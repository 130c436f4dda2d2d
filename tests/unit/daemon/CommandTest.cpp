#include "unit/daemon/CommandRun.h"
#include "unit/daemon/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

namespace
{

using velq::daemon::Error;
using velq::daemon::Outcome;
using velq::testing::CommandRun;
using velq::testing::isGone;
using velq::testing::outputOf;
using velq::testing::shell;
using namespace std::chrono_literals;
using namespace std::string_literals;

TEST(CommandTest, ReturnsWhatWasPrintedAndLooksAtNoExitStatus)
{
    EXPECT_EQ(outputOf("echo a; echo b"), "a\nb\n");
    EXPECT_EQ(outputOf("echo out; exit 3"), "out\n");
    EXPECT_EQ(outputOf("true"), "");
    EXPECT_EQ(outputOf("printf 'a\\000b\\377'"), "a\0b\xff"s);
}

TEST(CommandTest, PassesTheArgumentVectorAsItIs)
{
    CommandRun run("/bin/sh", {"-c", R"(printf '[%s]' "$0" "$@")", "a b", "", "$HOME", "x\"y\n"});
    EXPECT_EQ(run.outcome().value().output, "[a b][][$HOME][x\"y\n]");
}

TEST(CommandTest, TheEnvironmentIsMadeFromTheCallersNumberAlone)
{
    setenv("LD_VELQ", "x", 1);
    setenv("BASH_ENV", "/tmp/x", 1);
    CommandRun run("/usr/bin/env", {});
    EXPECT_EQ(run.outcome().value().output,
              "PATH=/usr/libexec/velq/nettools:/usr/sbin:/usr/bin:/sbin:/bin\n"
              "LC_ALL=C.UTF-8\nLANG=C.UTF-8\nHOME=/root\nVELQ_UID=4001\n");
    unsetenv("BASH_ENV");
    unsetenv("LD_VELQ");
}

TEST(CommandTest, HasTheThreeDescriptorsAndNoOther)
{
    const int inherited = open("/dev/null", O_RDONLY);
    CommandRun run("/bin/ls", {"/proc/self/fd"});
    // The fourth is the listing's own.
    EXPECT_EQ(run.outcome().value().output, "0\n1\n2\n3\n");
    close(inherited);
}

TEST(CommandTest, ReadsNothing)
{
    EXPECT_EQ(outputOf("cat; readlink /proc/self/fd/0"), "/dev/null\n");
}

TEST(CommandTest, WorksInTheRootFolderLeadingASession)
{
    EXPECT_EQ(outputOf("pwd"), "/\n");
    EXPECT_EQ(outputOf("set -- $(cat /proc/self/stat); [ $5 = $$ ] && [ $6 = $$ ] && echo leads"),
              "leads\n");
}

TEST(CommandTest, NoSignalIsBlockedOrIgnored)
{
    const auto before = std::signal(SIGHUP, SIG_IGN);
    EXPECT_EQ(outputOf("grep SigBlk /proc/self/status"), "SigBlk:\t0000000000000000\n");
    EXPECT_EQ(shell("kill -s HUP $$").outcome().value().failure->reason, "ended by signal 1");
    (void)std::signal(SIGHUP, before);
}

TEST(CommandTest, ADeathBySignalIsAnErrorWithItsNumber)
{
    const Outcome outcome = shell("echo out; kill -9 $$").outcome().value();
    ASSERT_TRUE(outcome.failure);
    EXPECT_EQ(outcome.failure->error, Error::SpawnFailed);
    EXPECT_EQ(outcome.failure->reason, "ended by signal 9");
    EXPECT_EQ(shell("kill -TERM $$").outcome().value().failure->reason, "ended by signal 15");
}

TEST(CommandTest, StandardErrorIsDrainedAndItsBeginningKept)
{
    const Outcome outcome =
        shell("head -c 62914560 /dev/zero | tr '\\0' x >&2; echo done").outcome().value();
    EXPECT_FALSE(outcome.failure);
    EXPECT_EQ(outcome.output, "done\n");
    EXPECT_EQ(outcome.complaint, std::string(1024, 'x'));
}

TEST(CommandTest, EightMegabytesAreReturned)
{
    EXPECT_EQ(outputOf("head -c 8388608 /dev/zero").size(), 8388608u);
}

TEST(CommandTest, OneByteMoreIsTooMuch)
{
    const Outcome outcome = shell("head -c 8388609 /dev/zero").outcome().value();
    ASSERT_TRUE(outcome.failure);
    EXPECT_EQ(outcome.failure->error, Error::OutputTooLarge);
}

TEST(CommandTest, EndlessOutputIsEnded)
{
    const velq::testing::TemporaryFolder folder;
    const std::string file = folder.path() / "pid";
    const Outcome outcome = shell("echo $$ > " + file + "; exec yes").outcome().value();
    ASSERT_TRUE(outcome.failure);
    EXPECT_EQ(outcome.failure->error, Error::OutputTooLarge);
    EXPECT_LE(outcome.output.size(), 8388608u);
    EXPECT_TRUE(isGone(std::stoi(folder.read("pid"))));
}

TEST(CommandTest, AProcessLeftBehindHoldsNobodyUpAndIsLeftAlone)
{
    const auto start = std::chrono::steady_clock::now();
    const std::string output = outputOf("echo first; sleep 1000 & echo $!");
    EXPECT_LT(std::chrono::steady_clock::now() - start, 10s);
    ASSERT_TRUE(output.starts_with("first\n"));
    const pid_t left = std::stoi(output.substr(6));
    EXPECT_FALSE(isGone(left));
    kill(left, SIGKILL);
}

TEST(CommandTest, WhatThePipeHeldAtTheEndIsNotLost)
{
    for (int i = 0; i < 20; ++i)
        ASSERT_EQ(outputOf("head -c 60000 /dev/zero").size(), 60000u);
}

} // namespace
