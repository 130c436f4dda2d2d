#pragma once

#include "nettools/networkmanager/Profiles.h"
#include "nettools/networksetup/Port.h"

#include <span>
#include <string>

namespace velq::nettools
{

/// Whether NetworkManager would use the device by itself: it manages it, may activate it, has a
/// profile that activates by itself, and the radio is on.
bool isSwitchedOn(const State &state, const Device &device, const Profiles &profiles);
bool isSwitchedOn(const State &state, const Device &device,
                  std::span<const ReadProfile> candidates);

/// Makes that so, and has a wired device use its profile. Throws Refusal, BusError; what had been
/// switched until then is switched back.
void switchOn(NetworkManager &manager, Profiles &profiles, const Port &port,
              const std::string &devicePath);

/// Undoes it, so that it stays so: by the radio of the only device that has one, else by the
/// profiles. Otherwise as above.
void switchOff(NetworkManager &manager, Profiles &profiles, const Port &port,
               const std::string &devicePath);

} // namespace velq::nettools
