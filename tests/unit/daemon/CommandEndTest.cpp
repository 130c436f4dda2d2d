#include "unit/daemon/CommandRun.h"
#include "unit/daemon/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

using velq::daemon::Error;
using velq::daemon::Outcome;
using velq::testing::CommandRun;
using velq::testing::isGone;
using velq::testing::shell;
using namespace std::chrono_literals;

using Clock = std::chrono::steady_clock;

void expectTimeout(const std::optional<Outcome> &outcome)
{
    ASSERT_TRUE(outcome && outcome->failure);
    EXPECT_EQ(outcome->failure->error, Error::Timeout);
}

// Commands that write the numbers of their processes into a file, line by line.
class CommandEndTest : public ::testing::Test
{
protected:
    std::string file() const { return m_folder.path() / "pids"; }

    std::vector<pid_t> pids() const
    {
        std::istringstream text(m_folder.read("pids"));
        std::vector<pid_t> numbers;
        for (pid_t pid = 0; text >> pid;)
            numbers.push_back(pid);
        return numbers;
    }

    static bool areGone(const std::vector<pid_t> &numbers)
    {
        return std::ranges::all_of(numbers, isGone);
    }

    // Runs the line with longer and longer limits until it has come to write so many numbers before
    // its end. Returns the limit.
    std::chrono::milliseconds reachLimit(const std::string &line, size_t numbers) const
    {
        auto limit = 500ms;
        while (true) {
            std::filesystem::remove(file());
            const auto start = Clock::now();
            expectTimeout(shell(line, limit).outcome());
            EXPECT_LT(Clock::now() - start, limit + 9s);
            if (pids().size() >= numbers || limit > 5s)
                break;
            limit *= 4;
        }
        EXPECT_GE(pids().size(), numbers);
        return limit;
    }

    // The same of one of which nothing is left.
    std::chrono::milliseconds endAtLimit(const std::string &line, size_t numbers) const
    {
        const auto limit = reachLimit(line, numbers);
        EXPECT_TRUE(areGone(pids()));
        return limit;
    }

    // A child of a child that is gone, with a session of its own, deaf to SIGTERM.
    std::string daemonised() const
    {
        return "(setsid sh -c 'trap \"\" TERM; echo $$ >> " + file()
            + "; while :; do sleep 1000; done' </dev/null >/dev/null 2>&1 &); ";
    }

    velq::testing::TemporaryFolder m_folder;
};

TEST_F(CommandEndTest, OneThatHangsIsEndedAtTheLimit)
{
    endAtLimit("echo $$ > " + file() + "; exec sleep 1000", 1);
}

// As long as it seems to be on a busy machine, it is not each time.
TEST_F(CommandEndTest, OneThatEndsWhenItIsToldIsNotWaitedForLonger)
{
    bool atOnce = false;
    for (int round = 0; round < 5 && !atOnce; ++round) {
        const auto start = Clock::now();
        expectTimeout(shell("exec sleep 1000", 500ms).outcome());
        EXPECT_GE(Clock::now() - start, 500ms);
        atOnce = Clock::now() - start < 2s;
    }
    EXPECT_TRUE(atOnce);
}

TEST_F(CommandEndTest, ItMayTidyUpFirst)
{
    reachLimit("trap 'echo 1 > " + file() + "; exit' TERM; while :; do sleep 0.05; done", 1);
    EXPECT_EQ(m_folder.read("pids"), "1\n");
}

TEST_F(CommandEndTest, OneThatIsDeafToItIsKilledAfterTheGrace)
{
    const auto start = Clock::now();
    const auto limit =
        endAtLimit("trap '' TERM; echo $$ > " + file() + "; while :; do sleep 1000; done", 1);
    EXPECT_GE(Clock::now() - start, limit + 1900ms);
}

TEST_F(CommandEndTest, NothingThatItStartedSurvives)
{
    const std::string line = daemonised() + daemonised() + "sleep 1000 & echo $! >> " + file()
        + "; echo $$ >> " + file() + "; exec sleep 1000";
    endAtLimit(line, 4);
    EXPECT_EQ(pids().size(), 4u);
}

TEST_F(CommandEndTest, OneThatForksAllTheTimeIsEnded)
{
    const std::string line = "trap '' TERM; while :; do echo $$ >> " + file()
        + "; (setsid sh -c 'trap \"\" TERM; echo $$ >> " + file()
        + "; sleep 0.3' &) ; sleep 0.01; done";
    endAtLimit(line, 5);
}

TEST_F(CommandEndTest, OneThatStoppedItselfIsEnded)
{
    endAtLimit("echo $$ > " + file() + "; kill -STOP $$", 1);
}

// Root can do that to it. What it then leaves behind is not ended.
TEST_F(CommandEndTest, OneThatStoppedItsSupervisorIsGivenUp)
{
    reachLimit("echo $$ > " + file() + "; kill -STOP $PPID; exec sleep 1000", 1);
    ASSERT_EQ(pids().size(), 1u);
    kill(pids().front(), SIGKILL);
}

TEST_F(CommandEndTest, AnotherCommandsProcessesAreLeftAlone)
{
    const velq::testing::TemporaryFolder gate;
    const std::string line = "(setsid sh -c 'echo $$ > " + (gate.path() / "other").string()
        + "; exec sleep 1000' </dev/null >/dev/null 2>&1 &); cat "
        + (gate.path() / "fifo").string();
    ASSERT_EQ(mkfifo((gate.path() / "fifo").c_str(), 0600), 0);
    CommandRun second = shell(line);
    ASSERT_TRUE(second.runUntil([&] { return gate.read("other").ends_with('\n'); }));
    expectTimeout(shell(daemonised() + "exec sleep 1000", 500ms).outcome());
    EXPECT_TRUE(areGone(pids()));
    const pid_t left = std::stoi(gate.read("other"));
    EXPECT_FALSE(isGone(left));
    gate.write("fifo", "through\n");
    EXPECT_EQ(second.outcome().value().output, "through\n");
    kill(left, SIGKILL);
}

TEST_F(CommandEndTest, EverythingGoesWithTheDaemon)
{
    const std::string line =
        daemonised() + "trap '' TERM; echo $$ >> " + file() + "; while :; do sleep 1000; done";
    const pid_t daemon = fork();
    if (daemon == 0) {
        CommandRun run("/bin/sh", {"-c", line});
        (void)run.runUntil([&] { return pids().size() == 2; });
        kill(getpid(), SIGKILL);
    }
    waitpid(daemon, nullptr, 0);
    const auto deadline = Clock::now() + 20s;
    EXPECT_EQ(pids().size(), 2u);
    while (!areGone(pids()) && Clock::now() < deadline)
        usleep(20000);
    EXPECT_TRUE(areGone(pids()));
}

TEST_F(CommandEndTest, ASupervisorThatIsKilledIsAFailure)
{
    CommandRun run("/bin/sh", {"-c", "echo $PPID $$ > " + file() + "; exec sleep 1000"});
    ASSERT_TRUE(run.runUntil([&] { return pids().size() == 2; }));
    kill(pids()[0], SIGKILL);
    const std::optional<Outcome> outcome = run.outcome();
    kill(pids()[1], SIGKILL);
    ASSERT_TRUE(outcome && outcome->failure);
    EXPECT_EQ(outcome->failure->error, Error::SpawnFailed);
}

TEST_F(CommandEndTest, NoZombieIsLeft)
{
    expectTimeout(shell("exec sleep 1000", 100ms).outcome());
    EXPECT_FALSE(shell("true").outcome()->failure);
    EXPECT_EQ(waitpid(-1, nullptr, WNOHANG), -1);
}

} // namespace
