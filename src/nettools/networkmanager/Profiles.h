#pragma once

#include "nettools/networkmanager/NetworkManager.h"
#include "nettools/networkmanager/ProfileCopies.h"

#include <map>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace velq::nettools
{

/// A connection profile with its settings as they were when it was read.
struct Profile {
    std::string path;
    Message message; ///< holds the settings
    Value settings;

    const std::string &uuid() const { return settings["connection"]["uuid"].text(); }
    bool autoconnects() const { return settings["connection"]["autoconnect"].truth(true); }
};
using ReadProfile = std::shared_ptr<const Profile>;

/// The profiles of one NetworkManager, which outlives this. Throws BusError; Refusal when a copy
/// cannot be kept.
class Profiles
{
public:
    explicit Profiles(NetworkManager &manager);

    /// Those that the device could use: first the one in use, then those that it would take by
    /// itself, best first, then the others. Profiles that the caller may not see are left out.
    std::vector<ReadProfile> candidates(const Device &device) const;
    /// The same for each of several devices, whose profiles are all asked for at once.
    std::vector<std::vector<ReadProfile>> candidates(std::span<const Device *const> devices) const;
    /// The first of the candidates; null when there is none.
    ReadProfile best(const Device &device) const;

    /// Keeps a copy of how it was unless there is one, then changes it for good. True when the
    /// copy is new. What it was before can be written back with undo().
    bool change(const Profile &profile, const std::vector<Edit> &edits);
    /// Writes the settings back as they were read.
    void undo(const Profile &profile);
    /// Makes a profile for a wired device that gets its addresses by itself.
    ReadProfile create(const Device &device, const std::string &name);

    bool hasCopy(const Profile &profile) const;
    /// Brings it back to how it was before the first change; a profile that was made for one goes.
    /// False when the copy is no good.
    bool restore(const Profile &profile);
    /// The settings as they are now; nothing when the profile has gone.
    Value settingsOf(const Profile &profile) const;
    /// The copy of a profile that was restored is of no use any more.
    void forget(const Profile &profile);

private:
    using ByPath = std::map<std::string, ReadProfile, std::less<>>;

    std::vector<std::string> pathsFor(const Device &device) const;
    /// Those of the profiles that the caller may see.
    ByPath read(std::span<const std::string> paths) const;
    std::vector<ReadProfile> choose(const Device &device, const ByPath &profiles) const;

    NetworkManager &m_manager;
    ProfileCopies m_copies;
};

} // namespace velq::nettools
