#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <sys/types.h>
#include <vector>

namespace velq::process
{

/// A program that could not be started: no such file, not executable, or the system has no room for
/// one more process. what() says which file and why.
class LaunchError : public std::invalid_argument
{
public:
    LaunchError(const std::string &path, int errorNumber);
    int errorNumber() const { return m_errorNumber; }

private:
    int m_errorNumber;
};

/// Where a child is to differ from what ChildProcess says. As it stands: nowhere.
struct Surroundings {
    std::optional<std::vector<std::string>> environment; ///< all of it, as "NAME=value"
    std::string folder;                                  ///< to work in; empty for the parent's
    bool inheritsOutput = false; ///< writes to the parent's standard output; no pipe is made
    bool mutesError = false;     ///< what it writes to standard error is lost
    bool ownSession = false;     ///< leads a session and group, every signal at its default
};

/// A running program whose standard output is a pipe to here. Standard C++ on POSIX; no Qt.
///
/// The child inherits standard input, standard error, the environment and the working folder, and
/// no other descriptor; no signal is blocked, SIGPIPE and SIGTTIN are back to their defaults. The
/// object owns the pipe's reading end and must see the child exit: the destructor waits for it. One
/// thread at a time.
class ChildProcess
{
public:
    /// Starts the file at `path` with `path` and `arguments` as its argument vector. No search path
    /// and no shell. Throws LaunchError.
    ChildProcess(const std::string &path, const std::vector<std::string> &arguments,
                 const Surroundings &surroundings = {});
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;
    ~ChildProcess();

    pid_t pid() const { return m_pid; }

    /// The pipe's reading end; -1 without a pipe. Owned by this object.
    int output() const { return m_output; }

    /// Blocks until the child has exited. Reads nothing: a child that prints more than the pipe
    /// holds (64 KiB) does not exit before somebody reads.
    void waitUntilExit();

    /// What the child ended with, once waitUntilExit() has returned: its exit status, or 128 and
    /// the number of the signal that ended it, as a shell says it.
    int exitStatus() const;

    /// Blocks until the child prints or has exited, and says which; when both, Output.
    enum class Event { Output, Exit };
    Event waitForEvent();

    /// One read of what the pipe holds at that moment, 64 KiB at most; waits while it is empty and
    /// somebody has the writing end open. Empty at its end.
    std::string readAvailable() const;

    /// Reads until nobody has the writing end open any more.
    std::string readToEnd() const;

private:
    void closeOutput();

    pid_t m_pid = -1;
    int m_status = 0; ///< as wait(2) gives it
    int m_pidDescriptor = -1;
    int m_output = -1;
};

} // namespace velq::process
