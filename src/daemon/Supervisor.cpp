#include "daemon/Supervisor.h"

#include "daemon/Pipe.h"
#include "daemon/SupervisedCommand.h"

#include <cerrno>
#include <csignal>
#include <sys/wait.h>
#include <system_error>

namespace velq::daemon
{

Supervisor::Supervisor(const Authorised &authorised, const posix::Descriptor &output,
                       const posix::Descriptor &error)
{
    Pipe pipe;
    const pid_t daemon = getpid();
    m_pid = fork();
    if (m_pid < 0)
        throw std::system_error(errno, std::generic_category(), "fork");
    if (m_pid == 0)
        SupervisedCommand(daemon).run(authorised,
                                      {output.get(), error.get(), pipe.writingEnd.get()});
    m_report = std::move(pipe.readingEnd);
}

Supervisor::~Supervisor()
{
    stop();
}

std::optional<Ending> Supervisor::ending()
{
    Ending ending{};
    ssize_t count = 0;
    while ((count = read(m_report.get(), &ending, sizeof ending)) < 0 && errno == EINTR) { }
    while (waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) { }
    m_pid = -1;
    if (count != sizeof ending)
        return std::nullopt;
    return ending;
}

void Supervisor::stop() const
{
    if (m_pid > 0)
        kill(m_pid, SIGTERM);
}

void Supervisor::abandon() const
{
    if (m_pid > 0)
        kill(m_pid, SIGKILL);
}

} // namespace velq::daemon
