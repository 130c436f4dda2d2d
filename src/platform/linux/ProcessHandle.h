#pragma once

#include <memory>
#include <sys/types.h>

namespace velq
{

/// A hold on one process, by a descriptor that follows it beyond its number. Any thread.
class ProcessHandle
{
public:
    /// Null when there is no such process.
    static std::shared_ptr<const ProcessHandle> open(pid_t pid);

    explicit ProcessHandle(int descriptor);
    ProcessHandle(const ProcessHandle &) = delete;
    ProcessHandle &operator=(const ProcessHandle &) = delete;
    ~ProcessHandle();

    /// As kill(2): signal 0 only asks. False when the process is gone or not ours to signal.
    bool send(int signal) const;

private:
    int m_descriptor;
};

} // namespace velq
