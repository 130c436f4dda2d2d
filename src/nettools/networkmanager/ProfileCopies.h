#pragma once

#include <optional>
#include <string>

namespace velq::nettools
{

/// How profiles were before the first change: a file each, named by the profile's UUID, readable
/// for nobody but its owner. Root's lie in /var/lib/velq/profiles, a user's in velq/profiles of
/// $XDG_STATE_HOME (~/.local/state). Two processes may keep the same one; the first wins.
class ProfileCopies
{
public:
    ProfileCopies();

    /// Keeps a copy unless there is one. False, with errno set, when it cannot be kept.
    bool keep(const std::string &uuid, const std::string &text) const;
    /// Nothing when none is kept.
    std::optional<std::string> copyOf(const std::string &uuid) const;
    void remove(const std::string &uuid) const;

private:
    std::string m_folder; ///< empty when it has no home to be in
};

} // namespace velq::nettools
