#include "shell/process/ChildProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace velq::process
{

namespace
{

// What a pipe holds unless somebody enlarges it, pipe(7).
constexpr size_t pipeCapacity = 65536;

// The most that any user may ask for, pipe(7): ten thousand lines.
constexpr int roomyPipe = 1 << 20;

// The tools that are read to their end take one or two.
constexpr int quickMilliseconds = 5;

class FileActions
{
public:
    FileActions() { posix_spawn_file_actions_init(&m_actions); }
    FileActions(const FileActions &) = delete;
    FileActions &operator=(const FileActions &) = delete;
    ~FileActions() { posix_spawn_file_actions_destroy(&m_actions); }
    posix_spawn_file_actions_t *get() { return &m_actions; }

private:
    posix_spawn_file_actions_t m_actions{};
};

class Attributes
{
public:
    Attributes() { posix_spawnattr_init(&m_attributes); }
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;
    ~Attributes() { posix_spawnattr_destroy(&m_attributes); }
    posix_spawnattr_t *get() { return &m_attributes; }

private:
    posix_spawnattr_t m_attributes{};
};

// What this program itself changes for its own sake; a SIGHUP that nohup ignores stays ignored.
sigset_t ownChanges()
{
    sigset_t changed;
    sigemptyset(&changed);
    sigaddset(&changed, SIGPIPE);
    sigaddset(&changed, SIGTTIN);
    return changed;
}

sigset_t everySignal()
{
    sigset_t all;
    sigfillset(&all);
    return all;
}

void set(Attributes &attributes, bool ownSession)
{
    sigset_t none;
    sigemptyset(&none);
    const sigset_t defaults = ownSession ? everySignal() : ownChanges();
    posix_spawnattr_setsigmask(attributes.get(), &none);
    posix_spawnattr_setsigdefault(attributes.get(), &defaults);
    const int flags =
        POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | (ownSession ? POSIX_SPAWN_SETSID : 0);
    posix_spawnattr_setflags(attributes.get(), static_cast<short>(flags));
}

void append(std::vector<char *> &vector, const std::vector<std::string> &words)
{
    for (const std::string &word : words)
        vector.push_back(const_cast<char *>(word.c_str()));
    vector.push_back(nullptr);
}

// An `output` of -1 is the parent's own.
int spawn(const std::string &path, const std::vector<std::string> &arguments,
          const Surroundings &surroundings, int output, pid_t &pid)
{
    FileActions actions;
    if (output >= 0)
        posix_spawn_file_actions_adddup2(actions.get(), output, STDOUT_FILENO);
    if (surroundings.mutesError)
        posix_spawn_file_actions_addopen(actions.get(), STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    if (!surroundings.folder.empty())
        posix_spawn_file_actions_addchdir_np(actions.get(), surroundings.folder.c_str());
    posix_spawn_file_actions_addclosefrom_np(actions.get(), STDERR_FILENO + 1);
    Attributes attributes;
    set(attributes, surroundings.ownSession);
    std::vector<char *> words{const_cast<char *>(path.c_str())};
    append(words, arguments);
    std::vector<char *> variables;
    if (surroundings.environment)
        append(variables, *surroundings.environment);
    return posix_spawn(&pid, path.c_str(), actions.get(), attributes.get(), words.data(),
                       surroundings.environment ? variables.data() : environ);
}

} // namespace

LaunchError::LaunchError(const std::string &path, int errorNumber)
    : std::invalid_argument("cannot launch '" + path
                            + "': " + std::generic_category().message(errorNumber))
    , m_errorNumber(errorNumber)
{
}

ChildProcess::ChildProcess(const std::string &path, const std::vector<std::string> &arguments,
                           const Surroundings &surroundings)
{
    std::array<int, 2> ends{-1, -1};
    if (!surroundings.inheritsOutput && pipe2(ends.data(), O_CLOEXEC) != 0)
        throw LaunchError(path, errno);
    m_output = ends[0];
    const int failure = spawn(path, arguments, surroundings, ends[1], m_pid);
    if (ends[1] >= 0)
        close(ends[1]);
    if (failure != 0) {
        closeOutput();
        throw LaunchError(path, failure);
    }
    m_pidDescriptor = static_cast<int>(syscall(SYS_pidfd_open, m_pid, 0));
}

ChildProcess::~ChildProcess()
{
    closeOutput();
    waitUntilExit();
    if (m_pidDescriptor >= 0)
        close(m_pidDescriptor);
}

void ChildProcess::waitUntilExit()
{
    if (m_pid < 0)
        return;
    while (waitpid(m_pid, &m_status, 0) < 0 && errno == EINTR) { }
    m_pid = -1;
}

int ChildProcess::exitStatus() const
{
    constexpr int signalled = 128;
    return WIFSIGNALED(m_status) ? signalled + WTERMSIG(m_status) : WEXITSTATUS(m_status);
}

ChildProcess::Event ChildProcess::waitForEvent()
{
    std::array<pollfd, 2> watched{pollfd{m_output, POLLIN, 0}, pollfd{m_pidDescriptor, POLLIN, 0}};
    while (poll(watched.data(), watched.size(), -1) < 0 && errno == EINTR) { }
    return (watched[0].revents & POLLIN) != 0 ? Event::Output : Event::Exit;
}

std::string ChildProcess::readAvailable() const
{
    std::string bytes(pipeCapacity, '\0');
    ssize_t count = 0;
    do {
        count = read(m_output, bytes.data(), bytes.size());
    } while (count < 0 && errno == EINTR);
    bytes.resize(count > 0 ? static_cast<size_t>(count) : 0);
    return bytes;
}

// Reading at once would wake this thread up for the output, for its end and for the exit; after the
// exit none of the three is waited for. The tool must find room for what it prints meanwhile.
std::string ChildProcess::readToEnd() const
{
    (void)fcntl(m_output, F_SETPIPE_SZ, roomyPipe);
    pollfd exit{m_pidDescriptor, POLLIN, 0};
    (void)poll(&exit, 1, quickMilliseconds);
    std::string all;
    for (std::string part = readAvailable(); !part.empty(); part = readAvailable())
        all += part;
    return all;
}

void ChildProcess::closeOutput()
{
    if (m_output >= 0)
        close(m_output);
    m_output = -1;
}

} // namespace velq::process
