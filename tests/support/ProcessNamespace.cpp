#include "support/ProcessNamespace.h"

#include <cstdio>
#include <cstdlib>
#include <sched.h>
#include <sys/mount.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velq::testing
{

namespace
{

// In the words by which a skipped test is known.
int refused()
{
    std::perror("[  SKIPPED ] the kernel gives no process namespace");
    return std::getenv("CI") == nullptr ? EXIT_SUCCESS : EXIT_FAILURE;
}

// The numbers must be the same inside, or the files would not be the test's any more.
void keepIds(uid_t user, gid_t group)
{
    const auto write = [](const char *file, const char *format, unsigned id) {
        if (FILE *map = std::fopen(file, "w"); map != nullptr) {
            (void)std::fprintf(map, format, id, id);
            (void)std::fclose(map);
        }
    };
    write("/proc/self/setgroups", "deny", 0);
    write("/proc/self/uid_map", "%u %u 1", user);
    write("/proc/self/gid_map", "%u %u 1", group);
}

bool enter()
{
    constexpr int wanted = CLONE_NEWPID | CLONE_NEWNS;
    const uid_t user = geteuid();
    const gid_t group = getegid();
    if (user == 0)
        return unshare(wanted) == 0;
    if (unshare(CLONE_NEWUSER | wanted) != 0)
        return false;
    keepIds(user, group);
    return true;
}

} // namespace

int runAmongOwnProcesses(const std::function<int()> &test)
{
    if (!enter())
        return refused();
    const pid_t first = fork();
    if (first == 0) {
        const bool mounted = mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0
            && mount("proc", "/proc", "proc", 0, nullptr) == 0;
        std::exit(mounted ? test() : refused());
    }
    int status = 0;
    waitpid(first, &status, 0);
    const int result = WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
    // Around the leak check, which starts a process: none starts in a namespace whose first one is
    // gone.
    (void)std::fflush(nullptr);
    syscall(SYS_exit_group, result);
    return result;
}

} // namespace velq::testing
