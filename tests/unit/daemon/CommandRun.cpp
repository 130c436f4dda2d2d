#include "unit/daemon/CommandRun.h"

#include "unit/daemon/EventLoop.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

namespace velq::testing
{

namespace
{

void blockSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGCHLD);
    pthread_sigmask(SIG_BLOCK, &set, nullptr);
}

} // namespace

CommandRun::CommandRun(std::string path, std::vector<std::string> arguments,
                       std::chrono::microseconds limit)
    : m_loop(newLoop())
{
    blockSignals();
    m_command = std::make_unique<daemon::Command>(
        m_loop.get(), daemon::AuthorisedInTests::make(std::move(path), std::move(arguments)), limit,
        [this](daemon::Outcome outcome) { m_outcome = std::move(outcome); });
}

bool CommandRun::runUntil(const std::function<bool()> &condition)
{
    return testing::runUntil(m_loop.get(), condition);
}

std::optional<daemon::Outcome> CommandRun::outcome()
{
    runUntil([this] { return m_outcome.has_value(); });
    return std::move(m_outcome);
}

CommandRun shell(const std::string &line, std::chrono::microseconds limit)
{
    return {"/bin/sh", {"-c", line}, limit};
}

std::string outputOf(const std::string &line)
{
    const std::optional<daemon::Outcome> outcome = shell(line).outcome();
    EXPECT_TRUE(outcome && !outcome->failure) << line;
    return outcome ? outcome->output : "";
}

bool isGone(pid_t pid)
{
    std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
    std::string line;
    std::getline(stat, line);
    return line.empty() || line.find(") Z ") != std::string::npos;
}

std::vector<int> openDescriptors()
{
    std::vector<int> numbers;
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fd"))
        numbers.push_back(std::stoi(entry.path().filename()));
    // The last one opened is the listing's own.
    std::ranges::sort(numbers);
    return numbers;
}

} // namespace velq::testing
