#pragma once

#include "nettools/networkmanager/Profiles.h"
#include "nettools/networksetup/Backend.h"
#include "nettools/networksetup/Port.h"

#include <functional>

namespace velq::nettools
{

/// The settings have been taken, but are not in effect in time.
class NotInTime : public Refusal
{
public:
    using Refusal::Refusal;
};

/// Whether the device's lease is of this second or the last. NetworkManager 1.42 takes the next one
/// for the same when it comes within the second, and then does without the DNS servers of both.
bool isLeaseFresh(const Device &device);

/// Whether a device shows that what its profile says now is in effect.
using InEffect = std::function<bool(const Device &)>;

/// Brings the changed profile of a device into effect and waits until it is: without going offline
/// where NetworkManager can do so, else by activating it anew. A device that cannot be used now, or
/// uses another profile, takes the change when its time comes. Throws Refusal when it does not come
/// into effect, BusError.
void apply(NetworkManager &manager, const Port &port, const std::string &devicePath,
           const Profile &profile, const InEffect &inEffect);

/// The same for a device that is to be in use afterwards: one that could be and is not is
/// activated.
void applyOrActivate(NetworkManager &manager, const Port &port, const std::string &devicePath,
                     const Profile &profile, const InEffect &inEffect);

/// By activating it anew, when it is in use: NetworkManager takes some settings back no other way.
void activateAnew(NetworkManager &manager, const Port &port, const std::string &devicePath,
                  const Profile &profile);

/// Throws Refusal when it has gone.
const Device &deviceAt(const State &state, const std::string &path, const Port &port);

} // namespace velq::nettools
