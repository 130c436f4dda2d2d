#pragma once

#include "daemon/Authorised.h"
#include "daemon/Supervisor.h"

#include <chrono>
#include <sys/types.h>

namespace velq::daemon
{

/// What a supervisor does; its life in the forked process.
class SupervisedCommand
{
public:
    /// Asked to end, commands get that long before they are killed.
    static constexpr std::chrono::milliseconds grace{2000};

    /// The parent's numbers of the descriptors that are kept.
    struct Descriptors {
        int output;
        int error;
        int report;
    };

    explicit SupervisedCommand(pid_t daemon)
        : m_daemon(daemon)
    {
    }

    /// Runs the command, reports its ending, and ends the process.
    [[noreturn]] void run(const Authorised &authorised, const Descriptors &descriptors);

private:
    using Clock = std::chrono::steady_clock;

    void becomeSupervisor() const;
    void start(const Authorised &authorised);
    void notStarted(int errorNumber);
    int nextSignal(std::chrono::milliseconds patience) const;
    bool reap();
    void endEverything();

    pid_t m_daemon;
    pid_t m_main = -1;
    bool m_mainHasEnded = false;
    Ending m_ending{};
};

} // namespace velq::daemon
