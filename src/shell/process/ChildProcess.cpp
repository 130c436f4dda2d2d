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
void undoSignalChanges(Attributes &attributes)
{
    sigset_t none;
    sigemptyset(&none);
    sigset_t changed;
    sigemptyset(&changed);
    sigaddset(&changed, SIGPIPE);
    sigaddset(&changed, SIGTTIN);
    posix_spawnattr_setsigmask(attributes.get(), &none);
    posix_spawnattr_setsigdefault(attributes.get(), &changed);
    posix_spawnattr_setflags(attributes.get(), POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
}

std::vector<char *> argumentVector(const std::string &path,
                                   const std::vector<std::string> &arguments)
{
    std::vector<char *> vector{const_cast<char *>(path.c_str())};
    for (const std::string &argument : arguments)
        vector.push_back(const_cast<char *>(argument.c_str()));
    vector.push_back(nullptr);
    return vector;
}

int spawn(const std::string &path, const std::vector<std::string> &arguments, int output, int &pid)
{
    FileActions actions;
    posix_spawn_file_actions_adddup2(actions.get(), output, STDOUT_FILENO);
    posix_spawn_file_actions_addclosefrom_np(actions.get(), STDERR_FILENO + 1);
    Attributes attributes;
    undoSignalChanges(attributes);
    return posix_spawn(&pid, path.c_str(), actions.get(), attributes.get(),
                       argumentVector(path, arguments).data(), environ);
}

} // namespace

LaunchError::LaunchError(const std::string &path, int errorNumber)
    : std::invalid_argument("cannot launch '" + path
                            + "': " + std::generic_category().message(errorNumber))
{
}

ChildProcess::ChildProcess(const std::string &path, const std::vector<std::string> &arguments)
{
    std::array<int, 2> ends{-1, -1};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw LaunchError(path, errno);
    m_output = ends[0];
    const int failure = spawn(path, arguments, ends[1], m_pid);
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
    while (waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) { }
    m_pid = -1;
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
