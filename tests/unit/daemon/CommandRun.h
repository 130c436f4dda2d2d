#pragma once

#include "daemon/Command.h"

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace velq::daemon
{

/// What a test lets pass.
struct AuthorisedInTests {
    static Authorised make(std::string path, std::vector<std::string> arguments)
    {
        return Authorised(Request{std::move(path), std::move(arguments)}, 4001);
    }
};

} // namespace velq::daemon

namespace velq::testing
{

/// An event loop and a command in it.
class CommandRun
{
public:
    CommandRun(std::string path, std::vector<std::string> arguments,
               std::chrono::microseconds limit = std::chrono::seconds{30});
    CommandRun(const CommandRun &) = delete;
    CommandRun &operator=(const CommandRun &) = delete;
    ~CommandRun() = default;

    /// Runs the loop until the command has ended; empty when it does not in time.
    std::optional<daemon::Outcome> outcome();

    /// Runs the loop until then. False when it does not become so in time.
    bool runUntil(const std::function<bool()> &condition);

private:
    daemon::Event m_loop;
    std::optional<daemon::Outcome> m_outcome;
    std::unique_ptr<daemon::Command> m_command;
};

/// One with /bin/sh.
CommandRun shell(const std::string &line,
                 std::chrono::microseconds limit = std::chrono::seconds{30});

/// What `line` printed; fails the test when that is not what came of it.
std::string outputOf(const std::string &line);

/// True once no process of that number is left, but perhaps somebody else's zombie.
bool isGone(pid_t pid);

/// The numbers of this process's open descriptors.
std::vector<int> openDescriptors();

} // namespace velq::testing
