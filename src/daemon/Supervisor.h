#pragma once

#include "daemon/Authorised.h"
#include "platform/linux/posix/Descriptor.h"

#include <optional>
#include <sys/types.h>

namespace velq::daemon
{

/// How a command's main process ended.
struct Ending {
    enum class Kind : int {
        Exited,
        Signalled,  ///< `number` is the signal's
        NotStarted, ///< `number` is errno's
    };
    Kind kind;
    int number;
};

/// A small process between the daemon and one command, which keeps the command's descendants
/// together: those that forked twice or lead a session of their own become its children and no
/// other command's.
///
/// It ends with the command's main process and then leaves alone what still runs. Stopped, or when
/// the daemon is gone, it asks the command's group to end, waits for the grace, and kills all that
/// descends from the command. SIGTERM and SIGCHLD must be blocked in the daemon, which has one
/// thread.
class Supervisor
{
public:
    /// Forks; `output` and `error` become the command's own. Throws std::system_error.
    Supervisor(const Authorised &authorised, const posix::Descriptor &output,
               const posix::Descriptor &error);
    Supervisor(const Supervisor &) = delete;
    Supervisor &operator=(const Supervisor &) = delete;
    /// Stops it if it still runs; does not wait.
    ~Supervisor();

    /// Readable once ending() does not block.
    int report() const { return m_report.get(); }

    /// Waits for the end. Nothing when the supervisor itself was killed.
    std::optional<Ending> ending();

    void stop() const;

    /// For one that does not end in time: kills it.
    void abandon() const;

private:
    pid_t m_pid = -1;
    posix::Descriptor m_report;
};

} // namespace velq::daemon
