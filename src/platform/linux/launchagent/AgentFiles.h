#pragma once

#include "platform/linux/launchagent/Domain.h"

#include <filesystem>
#include <string>

namespace velq::launchagent
{

/// What is kept on disk for one agent: its unit file, the target's link to that, the autostart
/// entry. A file of the same name that somebody else made is neither replaced nor removed.
class AgentFiles
{
public:
    /// `label` as isLabel() allows.
    AgentFiles(const Domain &domain, const std::string &label);

    std::filesystem::path unit() const { return m_unit; }
    /// Whether the file there is somebody else's.
    bool unitIsForeign() const;

    /// Writes the file if it says something else so far; true when it did. The file is replaced as
    /// a whole. Throws Error, also when the place is taken by somebody else's file.
    bool writeUnit(const std::string &text) const;
    /// The same, but somebody else's file is left alone without a word. False for the system's
    /// agents, which need none.
    bool writeAutostart(const std::string &text) const;

    /// Removes what is there and is ours; what cannot be removed stays.
    void remove() const;

private:
    std::filesystem::path m_unit;
    std::filesystem::path m_link;
    std::filesystem::path m_entry;
};

} // namespace velq::launchagent
