#pragma once

#include <stdexcept>
#include <string>
#include <vector>

namespace velq::process
{

/// A program that could not be started: no such file, not executable, or the system has no room for
/// one more process. what() says which file and why.
class LaunchError : public std::invalid_argument
{
public:
    LaunchError(const std::string &path, int errorNumber);
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
    ChildProcess(const std::string &path, const std::vector<std::string> &arguments);
    ChildProcess(const ChildProcess &) = delete;
    ChildProcess &operator=(const ChildProcess &) = delete;
    ~ChildProcess();

    /// The pipe's reading end. Owned by this object.
    int output() const { return m_output; }

    /// Blocks until the child has exited. Reads nothing: a child that prints more than the pipe
    /// holds (64 KiB) does not exit before somebody reads.
    void waitUntilExit();

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

    int m_pid = -1;
    int m_pidDescriptor = -1;
    int m_output = -1;
};

} // namespace velq::process
