#include "daemon/SupervisedCommand.h"

#include "shell/process/ChildProcess.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velq::daemon
{

namespace
{

constexpr int reportDescriptor = STDERR_FILENO + 1;
constexpr std::chrono::hours forever{24};
constexpr std::chrono::milliseconds betweenKills{10};

// What a command changes for one person, it has to know whose it is.
process::Surroundings surroundingsFor(uid_t user)
{
    process::Surroundings given;
    given.environment = {"PATH=/usr/libexec/velq/nettools:/usr/sbin:/usr/bin:/sbin:/bin",
                         "LC_ALL=C.UTF-8", "LANG=C.UTF-8", "HOME=/root",
                         "VELQ_UID=" + std::to_string(user)};
    given.folder = "/";
    given.inheritsOutput = true;
    given.ownSession = true;
    return given;
}

// False, with errno, when there is no empty standard input. The daemon keeps the three standard
// descriptors open, so none of those that are kept is overwritten before it is moved.
bool keepOnly(const SupervisedCommand::Descriptors &kept)
{
    dup2(kept.output, STDOUT_FILENO);
    dup2(kept.error, STDERR_FILENO);
    if (kept.report != reportDescriptor)
        dup3(kept.report, reportDescriptor, O_CLOEXEC);
    close_range(reportDescriptor + 1, ~0U, 0);
    const int nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
    return nothing >= 0 && dup2(nothing, STDIN_FILENO) == STDIN_FILENO && close(nothing) == 0;
}

// Else the end of the output would wait for this process.
void leaveOutputToCommand()
{
    dup2(STDIN_FILENO, STDOUT_FILENO);
    dup2(STDIN_FILENO, STDERR_FILENO);
}

// This process alone reaps them, so none of the numbers can be another process's by now.
void killChildren()
{
    std::ifstream children("/proc/thread-self/children");
    pid_t child = 0;
    while (children >> child)
        kill(child, SIGKILL);
}

Ending endingFrom(int status)
{
    if (WIFSIGNALED(status))
        return {Ending::Kind::Signalled, WTERMSIG(status)};
    return {Ending::Kind::Exited, WEXITSTATUS(status)};
}

sigset_t awaitedSignals()
{
    sigset_t set;
    sigemptyset(&set);
    sigaddset(&set, SIGTERM);
    sigaddset(&set, SIGCHLD);
    return set;
}

} // namespace

void SupervisedCommand::run(const Authorised &authorised, const Descriptors &descriptors)
{
    becomeSupervisor();
    if (keepOnly(descriptors))
        start(authorised);
    else
        notStarted(errno);
    while (!m_mainHasEnded) {
        if (nextSignal(forever) == SIGTERM)
            endEverything();
        reap();
    }
    // A daemon that is gone needs no report.
    [[maybe_unused]] const ssize_t written = write(reportDescriptor, &m_ending, sizeof m_ending);
    _exit(0);
}

void SupervisedCommand::becomeSupervisor() const
{
    prctl(PR_SET_CHILD_SUBREAPER, 1);
    prctl(PR_SET_PDEATHSIG, SIGTERM);
    if (getppid() != m_daemon)
        _exit(1);
}

void SupervisedCommand::start(const Authorised &authorised)
{
    const Request &request = authorised.request();
    try {
        // Never destroyed: this process ends without unwinding, and reaps by itself.
        m_main = (new process::ChildProcess(request.launchPath, request.arguments,
                                            surroundingsFor(authorised.user())))
                     ->pid();
    } catch (const process::LaunchError &failure) {
        notStarted(failure.errorNumber());
    } catch (const std::exception &) {
        notStarted(ENOMEM);
    }
    leaveOutputToCommand();
}

void SupervisedCommand::notStarted(int errorNumber)
{
    m_ending = {Ending::Kind::NotStarted, errorNumber};
    m_mainHasEnded = true;
}

// 0 when none came in time.
int SupervisedCommand::nextSignal(std::chrono::milliseconds patience) const
{
    const sigset_t awaited = awaitedSignals();
    const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(patience);
    const timespec time{seconds.count(), std::chrono::nanoseconds(patience - seconds).count()};
    return std::max(0, sigtimedwait(&awaited, nullptr, &time));
}

// False when there is no child any more.
bool SupervisedCommand::reap()
{
    int status = 0;
    pid_t ended = 0;
    while ((ended = waitpid(-1, &status, WNOHANG)) > 0) {
        if (ended == m_main) {
            m_ending = endingFrom(status);
            m_mainHasEnded = true;
        }
    }
    return ended == 0;
}

void SupervisedCommand::endEverything()
{
    const auto deadline = Clock::now() + grace;
    kill(-m_main, SIGTERM);
    while (reap() && Clock::now() < deadline)
        nextSignal(std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()));
    while (reap()) {
        killChildren();
        nextSignal(betweenKills);
    }
}

} // namespace velq::daemon
