#include "unit/daemon/CommandRun.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <system_error>
#include <unistd.h>

namespace
{

using velq::daemon::Error;
using velq::daemon::Outcome;
using velq::testing::CommandRun;
using velq::testing::openDescriptors;

TEST(SpawnFailureTest, WhatCannotBeStartedIsAFailure)
{
    for (const char *path : {"/no/such/file", "/tmp", "/etc/passwd"}) {
        const std::optional<Outcome> outcome = CommandRun(path, {}).outcome();
        ASSERT_TRUE(outcome && outcome->failure) << path;
        EXPECT_EQ(outcome->failure->error, Error::SpawnFailed) << path;
    }
}

// The sanitizer cannot do without descriptors itself.
#ifndef __SANITIZE_ADDRESS__

// Runs out of descriptors at the first, second, … call that makes one, there and in the supervisor.
class Starved
{
public:
    explicit Starved(rlim_t mostDescriptors)
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const rlimit less{mostDescriptors, m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &less);
    }
    Starved(const Starved &) = delete;
    Starved &operator=(const Starved &) = delete;
    ~Starved() { setrlimit(RLIMIT_NOFILE, &m_before); }

private:
    rlimit m_before{};
};

bool runsWith(rlim_t mostDescriptors)
{
    const Starved starved(mostDescriptors);
    try {
        const std::optional<Outcome> outcome = CommandRun("/bin/echo", {"out"}).outcome();
        EXPECT_TRUE(outcome) << mostDescriptors;
        if (!outcome || outcome->failure)
            return false;
        EXPECT_EQ(outcome->output, "out\n") << mostDescriptors;
        return true;
    } catch (const std::system_error &) {
        return false;
    }
}

TEST(SpawnFailureTest, WithoutDescriptorsNothingLeaksAndTheNextOneRuns)
{
    const std::vector<int> before = openDescriptors();
    const auto fewest = static_cast<rlim_t>(before.size()) - 1;
    int failed = 0;
    rlim_t most = fewest;
    for (; most < fewest + 30 && !runsWith(most); ++most) {
        ++failed;
        EXPECT_EQ(openDescriptors(), before) << most;
    }
    EXPECT_GE(failed, 4);
    EXPECT_TRUE(runsWith(most + 1));
    EXPECT_EQ(openDescriptors(), before);
}

#endif

// In a process of its own, which gives its rights away: root is not counted.
void exitWithWhatComesOfNoProcess()
{
    const rlimit none{0, 0};
    if (setrlimit(RLIMIT_NPROC, &none) != 0 || (geteuid() == 0 && setuid(65534) != 0))
        _exit(3);
    try {
        const CommandRun run("/bin/true", {});
        _exit(4);
    } catch (const std::system_error &failure) {
        _exit(failure.code().value() == EAGAIN ? 0 : 5);
    }
}

TEST(SpawnFailureTest, WithoutARoomForAProcessItSaysSo)
{
    EXPECT_EXIT(exitWithWhatComesOfNoProcess(), ::testing::ExitedWithCode(0), "");
}

} // namespace
