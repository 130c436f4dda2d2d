#pragma once

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace velq::launchagent
{

/// What a program needs to find the caller's desktop: its display and its session bus.
class SessionVariables
{
public:
    /// Of the calling process. Empty when it has no display of this machine: a display that is
    /// forwarded to another one belongs to nobody but the shell it was made for.
    static SessionVariables ofCaller();

    /// What is set, in a fixed order, "NAME=value".
    const std::vector<std::string> &assignments() const { return m_assignments; }
    /// The names of what another session may have left and this one does not have.
    const std::vector<std::string> &absent() const { return m_absent; }
    bool empty() const { return m_assignments.empty(); }

    /// Whether a process with this environment that was started at this time has the same display:
    /// a display that came up later has only the name in common.
    bool areThoseOf(const std::map<std::string, std::string> &environment,
                    std::chrono::system_clock::time_point started) const;

private:
    std::vector<std::string> m_assignments;
    std::vector<std::string> m_absent;
};

/// The environment that a process was started with; empty when it cannot be read.
std::map<std::string, std::string> environmentOf(int pid);

} // namespace velq::launchagent
