#pragma once

#include <filesystem>
#include <string>

namespace velq::launchagent
{

/// Whose agents: a person's or the whole system's.
struct Domain {
    bool isSystem = false;
    std::filesystem::path units;     ///< where its service manager reads unit files
    std::filesystem::path autostart; ///< what a desktop starts at log-in; empty for the system
    std::filesystem::path socket;    ///< where its service manager listens
    std::string target;              ///< what brings its agents up

    /// The caller's own, from the environment (HOME, XDG_CONFIG_HOME, XDG_RUNTIME_DIR).
    static Domain ofPerson();
    /// The system's for root, else the caller's own.
    static Domain ofCaller();
};

} // namespace velq::launchagent
