#pragma once

#include "daemon/Authorised.h"
#include "daemon/Handles.h"
#include "daemon/OutputReader.h"
#include "daemon/Refusal.h"
#include "daemon/Supervisor.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace velq::daemon
{

/// What came of a command.
struct Outcome {
    std::optional<Refusal> failure; ///< nothing when its output is to be returned
    std::string output;             ///< standard output, as it came
    std::string complaint;          ///< the beginning of standard error
};

/// A command that runs as root, from construction until it has ended.
///
/// Its environment is the daemon's choice, its folder "/", its standard input empty. Its main
/// process's end is the end; what it started and left behind is neither waited for nor ended then.
/// At the time limit, and when it has printed 8 MiB, it is ended with all its descendants.
class Command
{
public:
    using Finished = std::function<void(Outcome)>;

    /// Never calls `finished` itself; the event loop does, once. Throws std::system_error when
    /// nothing was started.
    Command(sd_event *loop, const Authorised &authorised, std::chrono::microseconds limit,
            Finished finished);
    Command(const Command &) = delete;
    Command &operator=(const Command &) = delete;
    ~Command() = default;

private:
    void end(Error why);
    void onEnded();
    void onTime();
    std::optional<Refusal> failureOf(const std::optional<Ending> &ending) const;

    Finished m_finished;
    std::optional<Error> m_endedFor;
    OutputReader m_output;
    OutputReader m_error;
    Supervisor m_supervisor;
    EventSource m_endSource;
    EventSource m_timeSource;
};

} // namespace velq::daemon
