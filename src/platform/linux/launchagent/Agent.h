#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace velq::launchagent
{

/// A launch agent as its property list defines it.
struct Agent {
    std::string propertyList;       ///< the file's absolute path
    std::string label;              ///< "Label"; see isLabel()
    std::string program;            ///< "Program", an absolute path; empty when there is none
    std::optional<int64_t> version; ///< "Version"
    bool keepAlive = false;         ///< "KeepAlive": started again whenever it ends

    std::string unit() const { return label + ".service"; }
};

/// Whether an agent may be called so: letters, digits, dots, hyphens and underscores, the first one
/// a letter or a digit, 200 at most. Such a name is safe in file names, unit names and command
/// lines.
bool isLabel(std::string_view text);

/// Reads the property list at `path`, which may be relative. Throws Error when there is no property
/// list or no label in it; the program is not looked at.
Agent readAgent(const std::string &path);

/// Throws Error unless the agent could be started: there is a program, it can be executed, and the
/// paths are such that a unit file can name them.
void requireProgram(const Agent &agent);

} // namespace velq::launchagent
