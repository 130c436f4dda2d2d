#include "platform/linux/OrphanProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <linux/close_range.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velq
{

namespace
{

using Texts = std::vector<char *>;

Texts pointersTo(const std::vector<std::string> &texts)
{
    Texts pointers;
    for (const std::string &text : texts)
        pointers.push_back(const_cast<char *>(text.c_str()));
    pointers.push_back(nullptr);
    return pointers;
}

// From here to the exec other threads' locks stay locked for ever: system calls only.
void becomeOrdinary()
{
    for (const int ignored : {SIGPIPE, SIGTTIN, SIGHUP})
        (void)std::signal(ignored, SIG_DFL);
    sigset_t none;
    sigemptyset(&none);
    (void)sigprocmask(SIG_SETMASK, &none, nullptr);
    const int null = open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        (void)dup2(null, stream);
    (void)close_range(STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
}

[[noreturn]] void becomeParentOf(const Texts &words, const Texts &environment, int report)
{
    setsid();
    if (fork() == 0) {
        becomeOrdinary();
        execve(words[0], words.data(), environment.data());
        _exit(write(report, "!", 1) == 1 ? 0 : 1);
    }
    _exit(0);
}

} // namespace

bool startOrphan(const std::vector<std::string> &words, const std::vector<std::string> &environment)
{
    const Texts command = pointersTo(words);
    const Texts variables = pointersTo(environment);
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return false;
    const pid_t parent = fork();
    if (parent == 0)
        becomeParentOf(command, variables, ends[1]);
    close(ends[1]);
    if (parent > 0) {
        while (waitpid(parent, nullptr, 0) < 0 && errno == EINTR) { }
    }
    // The pipe closes when the program takes the process over, and says something when it cannot.
    char complaint = 0;
    const ssize_t said = read(ends[0], &complaint, 1);
    close(ends[0]);
    return parent > 0 && said == 0;
}

} // namespace velq
